// The register screens on their real widgets: keys and clicks through the binder, with a
// scripted desktop answering the message boxes.
#include "registers/ajusta.h"
#include "registers/bancos.h"
#include "registers/cidade.h"
#include "registers/pesquisa.h"
#include "registers/registros_apoio.h"
#include "registers/saida.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class VistaRegistros : public teste::Registros {
  protected:
    void TearDown() override {
        janelas.clear();
        Registros::TearDown();
    }

    // The screen's own view in a window bound to the model, shown and active.
    QMainWindow &mostra(Tela &tela) {
        auto janela = std::make_unique<QMainWindow>();
        QMainWindow &j = *janela;
        ui::vista_de(tela.Nome)(tela, j);
        new ui::Binder(tela, &j);
        j.show();
        j.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&j));
        janelas.push_back(std::move(janela));
        return j;
    }
    template <class W> static W *w(QWidget &j, const QString &nome) {
        return j.findChild<W *>(nome);
    }

    std::vector<std::unique_ptr<QMainWindow>> janelas;
};

TEST_F(VistaRegistros, BancosMascaraAoSairEListaCarregaOLayout) {
    auto &b = abre<Bancos>();
    QMainWindow &j = mostra(b);
    auto *l1 = w<QLineEdit>(j, "Text1(2)");
    l1->setFocus();
    QTest::keyClicks(l1, "5");
    QTest::keyClick(l1, Qt::Key_Return);
    EXPECT_EQ(l1->text(), "005");
    EXPECT_TRUE(w<QLineEdit>(j, "Text1(3)")->hasFocus());

    auto *lista = w<QListView>(j, "List1");
    const auto itens = lista->model()->match(lista->model()->index(0, 0), Qt::DisplayRole,
                                             "237 - Bradesco", 1, Qt::MatchExactly);
    ASSERT_EQ(itens.size(), 1);
    lista->scrollTo(itens[0]);
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, lista->visualRect(itens[0]).center());
    EXPECT_EQ(w<QLineEdit>(j, "Text1(1)")->text(), "Bradesco");
    EXPECT_FALSE(w<QLineEdit>(j, "Text1(0)")->isEnabled());
    EXPECT_TRUE(w<QPushButton>(j, "Command3D1(2)")->isEnabled());
}

TEST_F(VistaRegistros, AjusteMoveCaixasComAsSetasEMostraOsRotulos) {
    auto &b = abre<Bancos>();
    b.Text1[0].Text = "001";
    b.Text1[1].Text = "Banco do Brasil";
    b.Clica("Command3D2");
    auto *a = d.Tela_<Ajusta>("Ajusta");
    ASSERT_NE(a, nullptr);
    QMainWindow &j = mostra(*a);
    QTest::qWait(0); // the view hooks its painting on the binder's mirror

    auto *caixa = w<QWidget>(j, "Text1(0)");
    const int topo = caixa->y();
    QTest::mouseClick(caixa, Qt::LeftButton);
    ASSERT_TRUE(caixa->hasFocus());
    EXPECT_TRUE(w<QLabel>(j, "Label2(0)")->autoFillBackground());
    QTest::keyClick(caixa, Qt::Key_Down);
    QTest::keyClick(caixa, Qt::Key_Down);
    QTest::keyClick(caixa, Qt::Key_Left);
    EXPECT_EQ(w<QLabel>(j, "Label2(0)")->text(), "003");
    EXPECT_EQ(w<QLabel>(j, "Label2(5)")->text(), "091");
    EXPECT_GT(caixa->y(), topo);
    // The arrows moved the box, not the focus; Tab moves it.
    EXPECT_TRUE(caixa->hasFocus());
    QTest::keyClick(caixa, Qt::Key_Tab);
    EXPECT_TRUE(w<QWidget>(j, "Text1(1)")->hasFocus());
    EXPECT_FALSE(w<QLabel>(j, "Label2(0)")->autoFillBackground());
    EXPECT_TRUE(w<QLabel>(j, "Label2(6)")->autoFillBackground());

    QTest::mouseClick(w<QPushButton>(j, "Command3D1(0)"), Qt::LeftButton);
    EXPECT_TRUE(a->Descarregada());
    EXPECT_EQ(b.Text1[2].Text, "003");
    EXPECT_EQ(b.Text1[7].Text, "091");
}

TEST_F(VistaRegistros, CidadeEnterLevaAoNomeEIncluirGrava) {
    auto &c = abre<Cidade>();
    QMainWindow &j = mostra(c);
    auto *codigo = w<QLineEdit>(j, "Text1(0)");
    codigo->setFocus();
    QTest::keyClicks(codigo, "42");
    QTest::keyClick(codigo, Qt::Key_Return);
    EXPECT_EQ(codigo->text(), "00042");
    auto *nome = w<QLineEdit>(j, "Text1(1)");
    ASSERT_TRUE(nome->hasFocus());
    QTest::keyClicks(nome, "Londrina");
    QTest::keyClick(nome, Qt::Key_Return);
    EXPECT_TRUE(w<QPushButton>(j, "Command3D1(0)")->hasFocus());
    QTest::mouseClick(w<QPushButton>(j, "Command3D1(0)"), Qt::LeftButton);
    EXPECT_EQ(w<QListView>(j, "List1")->model()->index(0, 0).data().toString(), "00042 - Londrina");
    EXPECT_EQ(codigo->text(), "");
}

TEST_F(VistaRegistros, PesquisaDigitaEDuploCliqueEscolhe) {
    s.TipoPesquisa = 2;
    auto *p = &abre<Pesquisa>();
    ASSERT_NE(p, nullptr);
    QMainWindow &j = mostra(*p);
    auto *procura = w<QLineEdit>(j, "Text1(0)");
    ASSERT_TRUE(procura->hasFocus());
    QTest::keyClicks(procura, "Brad");
    auto *lista = w<QListView>(j, "List1");
    ASSERT_EQ(lista->model()->rowCount(), 1);
    const QPoint ponto = lista->visualRect(lista->model()->index(0, 0)).center();
    QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, ponto);
    QTest::mouseDClick(lista->viewport(), Qt::LeftButton, {}, ponto);
    EXPECT_EQ(s.ResultadoPesquisa, "237");
    EXPECT_TRUE(p->Descarregada());
}

// Enter accepts from the keyboard: in the search field the first line found (or the chosen
// one), on the list the chosen line.
struct CasoEnter {
    const char *nome;
    QString procura;
    int escolhida; // -1: none
    bool naLista;
    QString resultado;
};

class PesquisaEnter : public VistaRegistros, public ::testing::WithParamInterface<CasoEnter> {};

TEST_P(PesquisaEnter, EnterAceitaALinha) {
    const CasoEnter &c = GetParam();
    s.TipoPesquisa = 2;
    auto *p = &abre<Pesquisa>();
    QMainWindow &j = mostra(*p);
    auto *procura = w<QLineEdit>(j, "Text1(0)");
    ASSERT_TRUE(procura->hasFocus());
    QTest::keyClicks(procura, c.procura);
    auto *lista = w<QListView>(j, "List1");
    if (c.escolhida >= 0) {
        const QModelIndex i = lista->model()->index(c.escolhida, 0);
        lista->scrollTo(i);
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, lista->visualRect(i).center());
    }
    QWidget *alvo = c.naLista ? static_cast<QWidget *>(lista) : procura;
    if (!c.naLista) procura->setFocus();
    QTest::keyClick(alvo, Qt::Key_Return);
    EXPECT_EQ(s.ResultadoPesquisa, c.resultado);
    EXPECT_TRUE(p->Descarregada());
}

INSTANTIATE_TEST_SUITE_P(Teclado, PesquisaEnter,
                         ::testing::Values(CasoEnter{"ProcuraPrimeira", "Brad", -1, false, "237"},
                                           CasoEnter{"ProcuraEscolhida", "", 1, false, "003"},
                                           CasoEnter{"ListaEscolhida", "", 2, true, "004"}),
                         [](const auto &info) { return std::string(info.param.nome); });

TEST_F(VistaRegistros, SaidaGruposIndependentesEImprimeNoSistema) {
    s.TabelaLista = "Bancos";
    s.TabelaBancos = 1;
    auto *saida = &abre<Saida>();
    QMainWindow &j = mostra(*saida);
    EXPECT_TRUE(w<QRadioButton>(j, "Option1(4)")->isChecked());
    EXPECT_TRUE(w<QRadioButton>(j, "Option1(0)")->isChecked());
    QTest::mouseClick(w<QRadioButton>(j, "Option1(1)"), Qt::LeftButton);
    QTest::mouseClick(w<QRadioButton>(j, "Option1(3)"), Qt::LeftButton);
    EXPECT_TRUE(w<QRadioButton>(j, "Option1(1)")->isChecked());
    EXPECT_TRUE(w<QRadioButton>(j, "Option1(3)")->isChecked());
    QTest::mouseClick(w<QPushButton>(j, "Command1"), Qt::LeftButton);
    ASSERT_EQ(d.Impressos.size(), 1);
    // By code: the first bank is 001.
    EXPECT_TRUE(d.Impressos[0].Paginas[0][5].startsWith("       001"));
}

} // namespace
