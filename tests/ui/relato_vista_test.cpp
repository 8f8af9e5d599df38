// The report of issued cheques on its real widgets: several rows of the table chosen with the
// mouse and the keyboard reach the model, and the model's choice reaches the table; a click on
// a heading sorts through the model; the chart saves as PDF.
#include "registers/registros_apoio.h"
#include "reports/excluirel.h"
#include "reports/relato.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QFile>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class VistaRelato : public teste::Registros {
  protected:
    void SetUp() override {
        Registros::SetUp();
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
        RecordSet &rs = Conjunto(s, TabLog);
        for (int i = 1; i <= 4; ++i) {
            rs.AddNew();
            rs.Define("Index", QString("%1").arg(i, 10, 10, QChar('0')));
            rs.Define("Codigo", QString::number(i));
            rs.Define("Banco", "237");
            rs.Define("V_CH", QString::number(i * 10) + ",");
            rs.Define("Favor", "Favorecido " + QString::number(i));
            rs.Define("Data", QString("1%1/0%1/24").arg(i));
            rs.Define("StCancel", " ");
            ASSERT_TRUE(rs.Update());
        }
        FechaTabelas(s, 0, 0, 0, 1);
    }
    void TearDown() override {
        janela.reset();
        Registros::TearDown();
    }
    QTableView *mostra(Tela &tela) {
        janela = std::make_unique<QMainWindow>();
        ui::vista_de(tela.Nome)(tela, *janela);
        new ui::Binder(tela, janela.get());
        janela->show();
        janela->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(janela.get()));
        return janela->findChild<QTableView *>("List1");
    }
    static void clica(QTableView *l, int linha, Qt::KeyboardModifiers m = {}) {
        const QModelIndex i = l->model()->index(linha, 0);
        QTest::mouseClick(l->viewport(), Qt::LeftButton, m, l->visualRect(i).center());
    }
    static std::set<int> escolhidas(QTableView *l) {
        std::set<int> e;
        for (const QModelIndex &i : l->selectionModel()->selectedRows())
            e.insert(i.row());
        return e;
    }
    std::unique_ptr<QMainWindow> janela;
};

TEST_F(VistaRelato, DuasLinhasEscolhidasComOMouseSaoCanceladas) {
    Relato &r = abre<Relato>();
    QTableView *l = mostra(r);
    ASSERT_NE(l, nullptr);
    ASSERT_EQ(l->model()->rowCount(), 4);
    clica(l, 0);
    clica(l, 2, Qt::ControlModifier);
    EXPECT_EQ(r.List1.Selecionadas, (std::set<int>{0, 2}));
    EXPECT_EQ(r.List1.ListIndex, 2);
    EXPECT_EQ(escolhidas(l), (std::set<int>{0, 2}));
    // The click showed the current cheque.
    EXPECT_TRUE(r.Text1[2].Caption.startsWith("Favorecido 3"));

    QTest::mouseClick(janela->findChild<QPushButton *>("SSCommand4"), Qt::LeftButton);
    auto *e = dynamic_cast<ExcluiRel *>(d.Aberta(telas::ExcluiRel));
    ASSERT_NE(e, nullptr);
    d.Respostas = {Resposta::Yes};
    e->Clica("BtnCmd", 0);
    QTest::qWait(0);
    // Cancelled rows stay, spelt out and greyed.
    const auto situacao = [l](int i) {
        const QModelIndex c = l->model()->index(i, ColunaLog::Situacao);
        return c.data().toString() + (c.data(Qt::ForegroundRole).isValid() ? " cinza" : "");
    };
    ASSERT_EQ(l->model()->rowCount(), 4);
    EXPECT_EQ(situacao(0), "Cancelado cinza");
    EXPECT_EQ(situacao(1), "");
    EXPECT_EQ(situacao(2), "Cancelado cinza");
    EXPECT_EQ(situacao(3), "");
    EXPECT_EQ(r.Text1[5].Caption, "60,00");
    EXPECT_TRUE(escolhidas(l).empty());
}

TEST_F(VistaRelato, TecladoEstendeAEscolhaEOModeloVoltaALista) {
    Relato &r = abre<Relato>();
    QTableView *l = mostra(r);
    clica(l, 1);
    QTest::keyClick(l, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(l, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(r.List1.Selecionadas, (std::set<int>{1, 2, 3}));
    EXPECT_EQ(r.List1.ListIndex, 3);

    // The model chooses rows of its own (as the walk of a printed list does).
    r.List1.Selecionadas = {0, 3};
    r.List1.ListIndex = 0;
    r.Refresh();
    EXPECT_EQ(escolhidas(l), (std::set<int>{0, 3}));
    EXPECT_EQ(l->currentIndex().row(), 0);
}

TEST_F(VistaRelato, CabecalhoOrdenaPeloModeloEGraficoViraPdf) {
    Relato &r = abre<Relato>();
    QTableView *l = mostra(r);
    QHeaderView *h = l->horizontalHeader();
    const auto valor = [l](int i) { return l->model()->index(i, ColunaLog::Valor).data(); };
    EXPECT_EQ(l->model()->headerData(ColunaLog::Valor, Qt::Horizontal).toString(), "Valor");
    EXPECT_EQ(l->model()->index(0, ColunaLog::Valor).data(Qt::TextAlignmentRole).toInt(),
              int(Qt::AlignRight | Qt::AlignVCenter));
    const QPoint titulo(h->sectionViewportPosition(ColunaLog::Valor) + 8, h->height() / 2);
    for (const char *primeiro : {"10,00", "40,00"}) {
        QTest::mouseClick(h->viewport(), Qt::LeftButton, {}, titulo);
        EXPECT_EQ(valor(0), primeiro);
    }
    EXPECT_EQ(r.OrdemColuna, ColunaLog::Valor);
    EXPECT_EQ(h->sortIndicatorOrder(), Qt::DescendingOrder);

    d.CaminhoSalvar = pasta.path() + "/grafico.pdf";
    QTest::mouseClick(janela->findChild<QPushButton *>("Grafico(1)"), Qt::LeftButton);
    QFile pdf(d.CaminhoSalvar);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly)) << d.Textos().join('|').toStdString();
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
}

} // namespace
