// The options screen and the help window on their real widgets.
#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "settings/opsoft.h"
#include "ui/binder.h"
#include "ui/desktop_qt.h"
#include "ui/vistas.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

class VistaOpSoft : public ::testing::Test {
  protected:
    void SetUp() override {
        s.PeriodoRel = 30;
        s.PeriodoCop = 15;
        s.ChequesPorPagina = 55;
        o = static_cast<OpSoft *>(d.Abre(std::make_unique<OpSoft>(s, d)));
        ui::vista_de(telas::OpSoft)(*o, j);
        new ui::Binder(*o, &j);
        j.show();
        j.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&j));
    }
    template <class W> W *w(const QString &nome) { return j.findChild<W *>(nome); }

    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    OpSoft *o = nullptr;
    QMainWindow j;
};

TEST_F(VistaOpSoft, CadaTextoAoLadoDoSeuNumero) {
    // The text before each number stands on its left, the text after it on its right.
    for (const auto &[antes, depois, campo] :
         {std::tuple{0, 1, 0}, std::tuple{3, 4, 1}, std::tuple{5, 6, 2}}) {
        auto *e = w<QLineEdit>(QString("Text01(%1)").arg(campo));
        auto *barra = w<QScrollBar>(QString("VScroll01(%1)").arg(campo));
        const int y = e->mapTo(&j, QPoint(0, 0)).y();
        EXPECT_LT(w<QLabel>(QString("Label1(%1)").arg(antes))->mapTo(&j, QPoint(0, 0)).x(),
                  e->mapTo(&j, QPoint(0, 0)).x());
        EXPECT_GT(w<QLabel>(QString("Label1(%1)").arg(depois))->mapTo(&j, QPoint(0, 0)).x(),
                  barra->mapTo(&j, QPoint(0, 0)).x());
        EXPECT_EQ(barra->mapTo(&j, QPoint(0, 0)).y(), y);
    }
}

TEST_F(VistaOpSoft, CampoFiltraELimitaEABarraSegue) {
    auto *campo = w<QLineEdit>("Text01(1)");
    auto *barra = w<QScrollBar>("VScroll01(1)");
    EXPECT_EQ(barra->minimum(), 1);
    EXPECT_EQ(barra->maximum(), 3650);
    EXPECT_EQ(barra->value(), 15);
    campo->setFocus();
    campo->selectAll();
    QTest::keyClicks(campo, "9a9x99");
    EXPECT_EQ(campo->text(), "9999");
    QTest::keyClick(campo, Qt::Key_Return);
    EXPECT_TRUE(w<QLineEdit>("Text01(2)")->hasFocus());
    EXPECT_EQ(campo->text(), "3650");
    EXPECT_EQ(barra->value(), 3650);
    EXPECT_EQ(o->Text01[1].Text, "3650");
}

TEST_F(VistaOpSoft, BarraMovidaPeloOperadorEscreveNoCampo) {
    auto *barra = w<QScrollBar>("VScroll01(0)");
    barra->setFocus();
    ASSERT_EQ(o->Foco(), (RefControle{"VScroll01", 0}));
    barra->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(w<QLineEdit>("Text01(0)")->text(), "31");
    QTest::keyClick(barra, Qt::Key_PageUp);
    EXPECT_EQ(o->VScroll01[0].Value, barra->value());
    EXPECT_EQ(w<QLineEdit>("Text01(0)")->text(), QString::number(barra->value()));

    QTest::mouseClick(w<QPushButton>("BtnCmd(0)"), Qt::LeftButton);
    EXPECT_TRUE(o->Descarregada());
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Opcoes", "PeriodoRelExc", ""),
              QString::number(s.PeriodoRel));
    EXPECT_NE(s.PeriodoRel, 30);
}

// The help: one window over the pages shipped with the program.
class JanelaAjuda : public ::testing::Test {
  protected:
    void TearDown() override {
        if (QWidget *a = ajuda()) delete a;
    }
    static QWidget *ajuda() {
        for (QWidget *w : QApplication::topLevelWidgets())
            if (w->objectName() == "Ajuda") return w;
        return nullptr;
    }
    static int janelas_de_ajuda() {
        int n = 0;
        for (QWidget *w : QApplication::topLevelWidgets())
            n += w->objectName() == "Ajuda" && w->isVisible();
        return n;
    }
    QTextBrowser *texto() { return ajuda()->findChild<QTextBrowser *>("Texto"); }
    QAction *acao(const char *nome) { return ajuda()->findChild<QAction *>(nome); }
    // Clicks the link whose text is this, as the operator does.
    void clica_link(const QString &rotulo) {
        QTextCursor c = texto()->document()->find(rotulo);
        ASSERT_FALSE(c.isNull()) << rotulo.toStdString();
        c.setPosition(c.selectionStart() + 1);
        texto()->setTextCursor(c);
        texto()->ensureCursorVisible();
        const QPoint ponto = texto()->cursorRect(c).center();
        QTest::mouseClick(texto()->viewport(), Qt::LeftButton, {}, ponto);
    }

    ui::DesktopQt desktop;
};

TEST_F(JanelaAjuda, AbreNoConteudoELinksLevamAOutraPaginaEVoltam) {
    desktop.Ajuda("Conteudo");
    ASSERT_NE(ajuda(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(ajuda()));
    EXPECT_EQ(texto()->source(), QUrl("qrc:/ajuda/conteudo.html"));
    EXPECT_EQ(ajuda()->windowTitle(), "Ajuda do Software Vexa Plus - Conteúdo");
    EXPECT_FALSE(acao("Voltar")->isEnabled());

    clica_link("Imprimir um cheque");
    EXPECT_EQ(texto()->source().fileName(), "cheque.html");
    EXPECT_FALSE(texto()->toPlainText().isEmpty());
    EXPECT_TRUE(acao("Voltar")->isEnabled());

    acao("Voltar")->trigger();
    EXPECT_EQ(texto()->source().fileName(), "conteudo.html");
    EXPECT_TRUE(acao("Avancar")->isEnabled());
    acao("Avancar")->trigger();
    EXPECT_EQ(texto()->source().fileName(), "cheque.html");
    acao("Conteudo")->trigger();
    EXPECT_EQ(texto()->source().fileName(), "conteudo.html");
}

TEST_F(JanelaAjuda, UmaSoJanelaETopicoLevaASuaPagina) {
    // A topic with a page of its own opens on it; one without opens the contents.
    for (const auto &[topico, pagina] :
         {std::pair{"Conteudo", "conteudo.html"}, std::pair{"Prazo", "prazo.html"},
          std::pair{"Relatorio", "relatorio.html"}, std::pair{"cadastros#bancos", "cadastros.html"},
          std::pair{"Inexistente", "conteudo.html"}, std::pair{"", "conteudo.html"}}) {
        desktop.Ajuda(topico);
        EXPECT_EQ(texto()->source().fileName(), pagina) << topico;
        EXPECT_EQ(janelas_de_ajuda(), 1) << topico;
    }
    // Every page is shipped and none is empty.
    for (const char *pagina :
         {"cadastros", "cheque", "configuracoes", "conteudo", "copia", "dados", "mensagens",
          "prazo", "relatorio", "teclas", "transferencia", "verso"}) {
        desktop.Ajuda(pagina);
        EXPECT_EQ(texto()->source().fileName(), QString(pagina) + ".html");
        EXPECT_GT(texto()->toPlainText().size(), 100) << pagina;
    }
}

// On any screen, F1 opens its help page in a window centred on the desktop, and Escape presses
// the screen's Cancelar: the options screen closes with nothing stored.
TEST_F(JanelaAjuda, F1AbreAPaginaDaTelaEEscFechaPeloSeuBotao) {
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    Tela *o = desktop.Abre(std::make_unique<OpSoft>(s, desktop));
    QMainWindow *j = desktop.Janela(*o);
    ASSERT_TRUE(QTest::qWaitForWindowActive(j));
    auto *campo = j->findChild<QLineEdit *>("Text01(0)");
    ASSERT_TRUE(campo->hasFocus());
    QTest::keyClick(campo, Qt::Key_F1);
    ASSERT_NE(ajuda(), nullptr);
    EXPECT_EQ(texto()->source(), QUrl("qrc:/ajuda/configuracoes.html#opcoes"));
    const QPoint desvio =
        ajuda()->geometry().center() - QApplication::primaryScreen()->availableGeometry().center();
    EXPECT_LE(desvio.manhattanLength(), 8); // a few pixels of frame

    j->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(j));
    QTest::keyClicks(campo, "45");
    QTest::keyClick(campo, Qt::Key_Escape);
    EXPECT_EQ(desktop.Aberta(telas::OpSoft), nullptr);
    EXPECT_EQ(s.PeriodoRel, 30);
    EXPECT_EQ(LeGravaIni(s.CaminhoIni, "Opcoes", "PeriodoRelExc", ""), "-2");
}

} // namespace
