#include "ui/relato_tabela.h"

#include "core/conversoes.h"

#include <QBarCategoryAxis>
#include <QBarSet>
#include <QBuffer>
#include <QChart>
#include <QChartView>
#include <QFont>
#include <QGraphicsLayout>
#include <QHash>
#include <QPainter>
#include <QPalette>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QStackedBarSeries>
#include <QValueAxis>

namespace vexa::ui {

QVariant TabelaRelato::data(const QModelIndex &i, int papel) const {
    if (!i.isValid() || i.row() >= rowCount()) return {};
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue(
            (i.column() == ColunaLog::Valor || i.column() == ColunaLog::Numero ? Qt::AlignRight
                                                                               : Qt::AlignLeft) |
            Qt::AlignVCenter);
    if (papel != Qt::DisplayRole && papel != Qt::ForegroundRole && papel != Qt::FontRole &&
        papel != Qt::ToolTipRole)
        return {};
    if (linha_ != i.row() || versao_ != c_.Itens.versao()) {
        linha_ = i.row();
        versao_ = c_.Itens.versao();
        celulas_ = r_.Celulas(i.row());
    }
    const bool cancelada = !celulas_.value(ColunaLog::Situacao).isEmpty();
    switch (papel) {
    case Qt::DisplayRole:
        return celulas_.value(i.column());
    case Qt::ForegroundRole:
        // A cancelled cheque is greyed, its status spelt out and its amount struck through:
        // it stays in the list but not in the total.
        return cancelada ? QVariant(QPalette().color(QPalette::Disabled, QPalette::Text))
                         : QVariant();
    case Qt::FontRole: {
        if (!cancelada) return {};
        QFont f;
        f.setItalic(true);
        f.setStrikeOut(i.column() == ColunaLog::Valor);
        return f;
    }
    default:
        return cancelada ? QStringLiteral("Cheque cancelado: fora do total") : QVariant();
    }
}

QVariant TabelaRelato::headerData(int secao, Qt::Orientation o, int papel) const {
    if (o != Qt::Horizontal || secao < 0 || secao >= ColunasLog) return {};
    if (papel == Qt::DisplayRole) return r_.Ordem.List(secao + 1);
    if (papel == Qt::TextAlignmentRole)
        return QVariant::fromValue((secao == ColunaLog::Valor || secao == ColunaLog::Numero
                                        ? Qt::AlignRight
                                        : Qt::AlignLeft) |
                                   Qt::AlignVCenter);
    return {};
}

QChartView *cria_grafico(QWidget *pai) {
    auto *grafico = new QChart;
    grafico->setTitle("Valores emitidos por mês e banco");
    grafico->legend()->setAlignment(Qt::AlignBottom);
    grafico->setAnimationOptions(QChart::NoAnimation);
    grafico->layout()->setContentsMargins(0, 0, 0, 0);
    auto *v = new QChartView(grafico, pai);
    v->setRenderHint(QPainter::Antialiasing);
    return v;
}

void desenha_grafico(QChartView &v, const QList<SomaMensal> &somas) {
    QChart &g = *v.chart();
    g.removeAllSeries();
    for (QAbstractAxis *e : g.axes())
        g.removeAxis(e);
    QStringList meses, bancos;
    QHash<QString, QHash<QString, qint64>> porBanco;
    qint64 maior = 0;
    QHash<QString, qint64> doMes;
    for (const SomaMensal &s : somas) {
        if (meses.isEmpty() || meses.last() != s.Mes) meses << s.Mes;
        if (!bancos.contains(s.Banco)) bancos << s.Banco;
        porBanco[s.Banco][s.Mes] = s.Centavos;
        maior = qMax(maior, doMes[s.Mes] += s.Centavos);
    }
    if (meses.isEmpty()) return;
    bancos.sort();
    auto *serie = new QStackedBarSeries;
    for (const QString &b : std::as_const(bancos)) {
        auto *conjunto = new QBarSet("Banco " + b);
        for (const QString &m : std::as_const(meses))
            *conjunto << double(porBanco[b].value(m)) / 100.0;
        serie->append(conjunto);
    }
    g.addSeries(serie);
    QStringList rotulos;
    for (const QString &m : std::as_const(meses))
        rotulos << m.mid(4, 2) + "/" + m.mid(2, 2);
    auto *x = new QBarCategoryAxis;
    x->append(rotulos);
    x->setLabelsAngle(meses.size() > 8 ? -90 : 0);
    g.addAxis(x, Qt::AlignBottom);
    serie->attachAxis(x);
    auto *y = new QValueAxis;
    y->setRange(0, double(maior) / 100.0 * 1.05);
    y->setLabelFormat("%.0f");
    y->setTitleText("R$");
    y->applyNiceNumbers();
    g.addAxis(y, Qt::AlignLeft);
    serie->attachAxis(y);
}

namespace {

// The chart drawn over the page's whole printable area.
bool pinta(QChartView &v, QPagedPaintDevice &pagina) {
    QPainter p;
    if (!p.begin(&pagina)) return false;
    v.render(&p, QRectF(p.viewport()), v.viewport()->rect());
    return p.end();
}

} // namespace

QByteArray grafico_pdf(QChartView &v) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter pdf(&buffer);
        pdf.setTitle("Valores emitidos por mês e banco");
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageOrientation(QPageLayout::Landscape);
        pdf.setPageMargins(QMarginsF(12, 12, 12, 12), QPageLayout::Millimeter);
        pdf.setResolution(150);
        if (!pinta(v, pdf)) return {};
    }
    return buffer.data();
}

int imprime_grafico(QChartView &v) {
    QPrinter impressora(QPrinter::HighResolution);
    impressora.setDocName("Valores emitidos por mês e banco");
    impressora.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialogo(&impressora, v.window());
    dialogo.setWindowTitle("Imprimir");
    if (dialogo.exec() != QDialog::Accepted) return 32755;
    if (impressora.outputFormat() == QPrinter::NativeFormat && !impressora.isValid()) return 482;
    return pinta(v, impressora) ? 0 : 482;
}

} // namespace vexa::ui
