#pragma once
// The report's register as a table with its columns, and the chart of its amounts by month and
// bank: both drawn from the report's model, which reads, sorts and sums in the database.
#include "reports/relato.h"
#include "ui/binder_lista.h"

#include <QAbstractTableModel>

class QWidget;

class QChartView;

namespace vexa::ui {

// The rows of the report's list in the columns of the register. A row is read when it is
// drawn; a click on the heading goes to the model, which sorts in the database.
class TabelaRelato : public SobreLinhas<QAbstractTableModel> {
  public:
    TabelaRelato(Relato &r, QObject *pai) : SobreLinhas(r.List1, pai), r_(r) {}
    int columnCount(const QModelIndex &pai = {}) const override {
        return pai.isValid() ? 0 : ColunasLog;
    }
    QVariant data(const QModelIndex &i, int papel) const override;
    QVariant headerData(int secao, Qt::Orientation o, int papel) const override;

  private:
    Relato &r_;
    // The row drawn last: a row is read once for all its columns.
    mutable int linha_ = -1;
    mutable quint64 versao_ = 0;
    mutable QStringList celulas_;
};

// The chart beside the table, empty until desenha_grafico fills it.
QChartView *cria_grafico(QWidget *pai);
// Bars of the amounts of each month, one colour a bank.
void desenha_grafico(QChartView &v, const QList<SomaMensal> &somas);
// The chart on a landscape A4 page: as a PDF document, or on the system printer after its
// dialog (0 printed, 32755 cancelled, 482 no printer).
QByteArray grafico_pdf(QChartView &v);
int imprime_grafico(QChartView &v);

} // namespace vexa::ui
