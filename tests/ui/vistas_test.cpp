// The register, transfer and copy screens on their real widgets: keys and clicks through the
// binder, with a scripted desktop answering the message boxes. What the models decide is tested
// on the models; here, what only the widgets can get wrong.
#include "catalogo/telas.h"
#include "copy/cmpcopia.h"
#include "copy/script.h"
#include "core/ini.h"
#include "registers/bancos.h"
#include "registers/pesquisa.h"
#include "registers/registros_apoio.h"
#include "registers/saida.h"
#include "store/bancos_padrao.h"
#include "ui/binder.h"
#include "ui/vistas.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class VistaTela : public teste::Registros {
  public:
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
        QTest::qWait(0); // a view may hook its painting on the binder's mirror
        janelas.push_back(std::move(janela));
        return j;
    }
    // The screen by its name.
    Tela &abre_tela(const QString &nome) {
        Tela *t = d.Abre(cria_tela(nome, s, d));
        EXPECT_NE(t, nullptr);
        return *t;
    }
    template <class W> static W *w(QWidget &j, const QString &nome) {
        return j.findChild<W *>(nome);
    }

    std::vector<std::unique_ptr<QMainWindow>> janelas;
};

// Fields typed key by key and left with Enter, in turn: each widget shows the model's mask and
// the focus goes where the screen sends it.
struct Passo {
    QString campo, digitado, mostrado, proximo;
};

struct CasoEnter {
    const char *nome;
    QString tela;
    QString botao; // clicked first; empty for none
    QList<Passo> passos;
};

class EnterNaVista : public VistaTela, public ::testing::WithParamInterface<CasoEnter> {};

TEST_P(EnterNaVista, MascaraEProximoCampo) {
    const CasoEnter &c = GetParam();
    LeGravaIni(s.CaminhoIni, "ChequeTransf", "001",
               linha_transf(posicoes_padrao_transf(), "Banco do Brasil"));
    QMainWindow &j = mostra(abre_tela(c.tela));
    if (!c.botao.isEmpty()) QTest::mouseClick(w<QPushButton>(j, c.botao), Qt::LeftButton);
    for (const Passo &p : c.passos) {
        auto *campo = w<QLineEdit>(j, p.campo);
        campo->setFocus();
        QTest::keyClicks(campo, p.digitado);
        QTest::keyClick(campo, Qt::Key_Return);
        EXPECT_EQ(campo->text(), p.mostrado) << p.campo.toStdString();
        EXPECT_TRUE(w<QWidget>(j, p.proximo)->hasFocus()) << p.campo.toStdString();
    }
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Telas, EnterNaVista,
    ::testing::Values(
        CasoEnter{"Bancos", telas::Bancos, "", {{"Text1(2)", "5", "005", "Text1(3)"}}},
        CasoEnter{"Cidade",
                  telas::Cidade,
                  "",
                  {{"Text1(0)", "42", "00042", "Text1(1)"},
                   {"Text1(1)", "Londrina", "Londrina", "Command3D1(0)"}}},
        // From the last line the transfer register goes on to the first column.
        CasoEnter{"BancTrans", telas::BancTrans, "", {{"Text1(8)", "", "", "Text1(9)"}}},
        CasoEnter{
            "ChequeTransf",
            telas::ChequeTransf,
            "",
            {{"txtBanco", "1", "001", "txtValor"}, {"txtValor", "50", "50,00", "txtAgencia"}}},
        // The line of the comment is followed by the amount's column, not by its own column.
        CasoEnter{"Script",
                  telas::Script,
                  "Command3D1(0)",
                  {{"Text1(0)", "7", "007", "Text1(1)"}, {"Text1(9)", "", "", "Text1(10)"}}}),
    [](const auto &info) { return std::string(info.param.nome); });

// The graphic adjusts: a click on a box takes the focus and lights its labels; the arrows move
// the box on the sheet, not the focus, and the labels follow.
struct CasoSetas {
    const char *nome;
    QString registro; // with bank 001 typed on it
    std::function<void(Tela &)> prepara;
    QString ajuste, caixa, acesa;
    QList<Qt::Key> teclas;
    QList<std::pair<QString, QString>> rotulos;
    QString mesmaLinha; // a box that keeps to the moved box's line; empty for none
};

class SetasNoAjuste : public VistaTela, public ::testing::WithParamInterface<CasoSetas> {};

TEST_P(SetasNoAjuste, MovemACaixaEOsRotulos) {
    const CasoSetas &c = GetParam();
    Tela &registro = abre_tela(c.registro);
    registro.Digita("Text1", 0, "001");
    registro.Digita("Text1", 1, "Banco do Brasil");
    if (c.prepara) c.prepara(registro);
    registro.Clica("Command3D2");
    Tela *ajuste = d.Aberta(c.ajuste);
    ASSERT_NE(ajuste, nullptr);
    QMainWindow &j = mostra(*ajuste);
    auto *caixa = w<QWidget>(j, c.caixa);
    const int topo = caixa->y();
    QTest::mouseClick(caixa, Qt::LeftButton);
    ASSERT_TRUE(caixa->hasFocus());
    EXPECT_TRUE(w<QLabel>(j, c.acesa)->autoFillBackground());
    for (Qt::Key k : c.teclas)
        QTest::keyClick(caixa, k);
    for (const auto &[rotulo, texto] : c.rotulos)
        EXPECT_EQ(w<QLabel>(j, rotulo)->text(), texto) << rotulo.toStdString();
    EXPECT_GT(caixa->y(), topo);
    if (!c.mesmaLinha.isEmpty()) {
        EXPECT_EQ(w<QWidget>(j, c.mesmaLinha)->y(), caixa->y());
    }
    EXPECT_TRUE(caixa->hasFocus());
}

INSTANTIATE_TEST_SUITE_P(Ajustes, SetasNoAjuste,
                         ::testing::Values(CasoSetas{"Cheque",
                                                     telas::Bancos,
                                                     {},
                                                     telas::Ajusta,
                                                     "Text1(0)",
                                                     "Label2(0)",
                                                     {Qt::Key_Down, Qt::Key_Down, Qt::Key_Left},
                                                     {{"Label2(0)", "003"}, {"Label2(5)", "091"}},
                                                     ""},
                                           CasoSetas{"Transferencia",
                                                     telas::BancTrans,
                                                     {},
                                                     telas::AjustaChequeTransferencia,
                                                     "Text1(3)",
                                                     "Label2(10)",
                                                     {Qt::Key_Down},
                                                     {{"Label2(3)", "013"}, {"Label2(4)", "013"}},
                                                     "Text1(4)"},
                                           CasoSetas{"Copia",
                                                     telas::Script,
                                                     [](Tela &t) {
                                                         for (int i = 2; i <= 20; ++i)
                                                             t.Digita("Text1", i,
                                                                      i == 8 ? "12" : "10");
                                                     },
                                                     telas::AjusteScript,
                                                     "Text1(4)",
                                                     "Label2(4)",
                                                     {Qt::Key_Down},
                                                     {{"Label2(4)", "013"}},
                                                     "Text1(5)"}),
                         [](const auto &info) { return std::string(info.param.nome); });

// Tab leaves the box: the focus and the light go on to the next one.
TEST_F(VistaTela, TabNoAjusteLevaFocoELuz) {
    auto &b = abre<Bancos>();
    b.Text1[0].Text = "001";
    b.Text1[1].Text = "Banco do Brasil";
    b.Clica("Command3D2");
    QMainWindow &j = mostra(*d.Aberta(telas::Ajusta));
    auto *caixa = w<QWidget>(j, "Text1(0)");
    QTest::mouseClick(caixa, Qt::LeftButton);
    QTest::keyClick(caixa, Qt::Key_Tab);
    EXPECT_TRUE(w<QWidget>(j, "Text1(1)")->hasFocus());
    EXPECT_FALSE(w<QLabel>(j, "Label2(0)")->autoFillBackground());
    EXPECT_TRUE(w<QLabel>(j, "Label2(6)")->autoFillBackground());
}

TEST_F(VistaTela, CliqueNaListaCarregaOLayout) {
    QMainWindow &j = mostra(abre<Bancos>());
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

// The search window accepts by keyboard or mouse: Enter in the search field takes the first line
// found (or the chosen one), Enter on the list or a double click the chosen line.
enum class Aceite { EnterNaProcura, EnterNaLista, DuploClique };

struct CasoPesquisa {
    const char *nome;
    QString procura;
    int escolhida; // -1: none
    Aceite aceite;
    QString resultado;
};

class PesquisaNaVista : public VistaTela, public ::testing::WithParamInterface<CasoPesquisa> {};

TEST_P(PesquisaNaVista, AceitaALinha) {
    const CasoPesquisa &c = GetParam();
    s.TipoPesquisa = 2;
    auto &p = abre<Pesquisa>();
    QMainWindow &j = mostra(p);
    auto *procura = w<QLineEdit>(j, "Text1(0)");
    ASSERT_TRUE(procura->hasFocus());
    QTest::keyClicks(procura, c.procura);
    auto *lista = w<QListView>(j, "List1");
    QPoint ponto;
    if (c.escolhida >= 0) {
        const QModelIndex i = lista->model()->index(c.escolhida, 0);
        lista->scrollTo(i);
        ponto = lista->visualRect(i).center();
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {}, ponto);
    }
    if (c.aceite == Aceite::DuploClique) {
        QTest::mouseDClick(lista->viewport(), Qt::LeftButton, {}, ponto);
    } else if (c.aceite == Aceite::EnterNaLista) {
        QTest::keyClick(lista, Qt::Key_Return);
    } else {
        procura->setFocus();
        QTest::keyClick(procura, Qt::Key_Return);
    }
    EXPECT_EQ(s.ResultadoPesquisa, c.resultado);
    EXPECT_TRUE(p.Descarregada());
}

INSTANTIATE_TEST_SUITE_P(
    Teclado, PesquisaNaVista,
    ::testing::Values(CasoPesquisa{"ProcuraPrimeira", "Brad", -1, Aceite::EnterNaProcura, "237"},
                      CasoPesquisa{"ProcuraEscolhida", "", 1, Aceite::EnterNaProcura, "003"},
                      CasoPesquisa{"ListaEscolhida", "", 2, Aceite::EnterNaLista, "004"},
                      CasoPesquisa{"DuploClique", "Brad", 0, Aceite::DuploClique, "237"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(VistaTela, SaidaGruposIndependentesEImprimeNoSistema) {
    s.TabelaLista = "Bancos";
    s.TabelaBancos = 1;
    QMainWindow &j = mostra(abre<Saida>());
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

// The copy's page box: the layout chosen in the combo, the cursor's line and column in the
// title, and a line past 80 columns that blocks the sending.
TEST_F(VistaTela, CopiaMostraOCursorEBarraALinhaLonga) {
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
    for (const char *codigo : {"001", "002"}) {
        RecordSet rs;
        ASSERT_TRUE(rs.Abre(s.Banco->db(), "Select * From Script"));
        const QStringList valores = {codigo, "Layout", "2",  "5",  "6",  "1",  "2",
                                     "8",    "10",     "14", "60", "5",  "5",  "2",
                                     "2",    "5",      "30", "5",  "52", "56", "68"};
        rs.AddNew();
        for (int i = 0; i < CamposScript().size(); ++i)
            rs.Define(CamposScript()[i], valores[i]);
        ASSERT_TRUE(rs.Update());
    }
    ChequeCopia c;
    c.Banco = "237";
    c.NomeBanco = "BRADESCO";
    c.Valor = "10,00";
    c.Data = "05/02/99";
    Tela *t = d.Abre(std::make_unique<CmpCopia>(s, d, c));
    ASSERT_NE(t, nullptr);
    QMainWindow &j = mostra(*t);
    auto *combo = w<QComboBox>(j, "Combo1");
    ASSERT_EQ(combo->count(), 2);
    QTest::keyClick(combo, Qt::Key_Down);
    auto *pagina = w<QPlainTextEdit>(j, "CopiaTxt");
    EXPECT_TRUE(pagina->toPlainText().startsWith("  237-BRADESCO\n"));

    pagina->setFocus();
    QTextCursor cursor = pagina->textCursor();
    cursor.movePosition(QTextCursor::Start);
    cursor.movePosition(QTextCursor::Down);
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 4);
    pagina->setTextCursor(cursor);
    QTest::qWait(0);
    EXPECT_EQ(j.windowTitle(), "Cópia do Cheque [02-005]");

    auto *enviar = w<QPushButton>(j, "BtnCmd(0)");
    EXPECT_TRUE(enviar->isEnabled());
    QTest::keyClicks(pagina, QString(81, u'x'));
    QTest::qWait(0);
    EXPECT_FALSE(enviar->isEnabled());
    EXPECT_TRUE(w<QLabel>(j, "Info")->isVisible());
    EXPECT_EQ(w<QLabel>(j, "Info")->text(), "\nLinha 2 Extrapola Tamanho Maximo!");
    EXPECT_EQ(j.windowTitle(), "Cópia do Cheque [02-086]");
}

} // namespace
