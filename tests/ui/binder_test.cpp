#include "core/desktop_roteiro.h"
#include "core/tela.h"
#include "ui/binder.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// Two fields where Enter moves on and a leave check refuses "x", a button, a list and a box.
class Formulario : public Tela {
  public:
    Formulario(Sessao &s, Desktop &d) : Tela("Formulario", "Formulário", s, d) {
        registra("Text1", Text1);
        registra("Ok", Ok);
        registra("List1", List1);
        registra("Marca", Marca);
        ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int) {
            if (k == 13) SetFocus("Text1", i + 1 < 2 ? i + 1 : 0);
            if (k == 119) Text1[i].Text.clear();
        });
        liga("Text1", Evento::LostFocus, [this](int i) {
            if (Text1[i].Text == "x") {
                Text1[i].Text.clear();
                SetFocus("Text1", i);
            }
        });
        liga("Text1", Evento::Change, [this](int i) { mudancas.append(Text1[i].Text); });
        liga("Ok", Evento::Click, [this](int) {
            ++cliques;
            List1.AddItem("linha " + QString::number(cliques));
            Ok.Caption = "De novo";
        });
        liga("List1", Evento::Click, [this](int) { escolhida = List1.ListIndex; });
        liga("Marca", Evento::Click, [this](int) { Text1[1].Enabled = Marca.Value == 0; });
    }
    Matriz<Texto> Text1{{0, Texto("", 3)}, {1, Texto()}};
    Botao Ok{"OK"};
    Lista List1;
    Caixa Marca{"Trava"};
    QStringList mudancas;
    int cliques = 0;
    int escolhida = -1;
};

class BinderTeste : public ::testing::Test {
  protected:
    void SetUp() override {
        auto *l = new QVBoxLayout(&janela);
        for (const char *nome : {"Text1(0)", "Text1(1)"}) {
            auto *e = new QLineEdit;
            e->setObjectName(nome);
            l->addWidget(e);
        }
        auto *b = new QPushButton;
        b->setObjectName("Ok");
        l->addWidget(b);
        auto *lista = new QListWidget;
        lista->setObjectName("List1");
        l->addWidget(lista);
        auto *c = new QCheckBox;
        c->setObjectName("Marca");
        l->addWidget(c);
        binder = new ui::Binder(tela, &janela);
        janela.show();
        janela.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&janela));
    }
    template <class W> W *w(const char *nome) { return janela.findChild<W *>(nome); }

    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
    Formulario tela{sessao, desktop};
    QWidget janela;
    ui::Binder *binder = nullptr;
};

using ui::Binder;

TEST_F(BinderTeste, DigitarChegaAoModeloEORespeitaOMaximo) {
    w<QLineEdit>("Text1(0)")->setFocus();
    QTest::keyClicks(w<QLineEdit>("Text1(0)"), "12345");
    EXPECT_EQ(tela.Text1[0].Text, "123");
    EXPECT_EQ(tela.mudancas, QStringList({"1", "12", "123"}));
    EXPECT_EQ(tela.Foco(), (RefControle{"Text1", 0}));
}

TEST_F(BinderTeste, EnterDoModeloMoveOFocoDeVerdade) {
    w<QLineEdit>("Text1(0)")->setFocus();
    QTest::keyClick(w<QLineEdit>("Text1(0)"), Qt::Key_Return);
    EXPECT_TRUE(w<QLineEdit>("Text1(1)")->hasFocus());
    EXPECT_EQ(tela.Foco(), (RefControle{"Text1", 1}));
}

TEST_F(BinderTeste, SaidaRecusadaDevolveOFocoAoCampo) {
    w<QLineEdit>("Text1(0)")->setFocus();
    QTest::keyClicks(w<QLineEdit>("Text1(0)"), "x");
    QTest::mouseClick(w<QLineEdit>("Text1(1)"), Qt::LeftButton);
    EXPECT_TRUE(w<QLineEdit>("Text1(0)")->hasFocus());
    EXPECT_EQ(w<QLineEdit>("Text1(0)")->text(), "");
}

TEST_F(BinderTeste, TeclaDeFuncaoChegaComOCodigoClassico) {
    w<QLineEdit>("Text1(1)")->setFocus();
    QTest::keyClicks(w<QLineEdit>("Text1(1)"), "abc");
    QTest::keyClick(w<QLineEdit>("Text1(1)"), Qt::Key_F8);
    EXPECT_EQ(w<QLineEdit>("Text1(1)")->text(), "");
}

TEST_F(BinderTeste, CliqueListaECaixaEspelhamOEstado) {
    QTest::mouseClick(w<QPushButton>("Ok"), Qt::LeftButton);
    QTest::mouseClick(w<QPushButton>("Ok"), Qt::LeftButton);
    EXPECT_EQ(tela.cliques, 2);
    EXPECT_EQ(w<QPushButton>("Ok")->text(), "De novo");
    ASSERT_EQ(w<QListWidget>("List1")->count(), 2);
    w<QListWidget>("List1")->setCurrentRow(1);
    EXPECT_EQ(tela.escolhida, 1);
    // On the box itself: the widget is wider than the box it draws.
    auto *marca = w<QCheckBox>("Marca");
    QTest::mouseClick(marca, Qt::LeftButton, {}, QPoint(6, marca->height() / 2));
    EXPECT_EQ(tela.Marca.Value, 1);
    EXPECT_FALSE(w<QLineEdit>("Text1(1)")->isEnabled());
}

TEST_F(BinderTeste, MudancaFeitaPeloProgramaApareceNoRefresh) {
    tela.Text1[1].Text = "do programa";
    tela.Refresh();
    EXPECT_EQ(w<QLineEdit>("Text1(1)")->text(), "do programa");
    EXPECT_TRUE(tela.mudancas.isEmpty());
}

TEST(CodigoTecla, TeclasComCodigoClassico) {
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_F3), 114);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_F4), 115);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_F8), 119);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_Return), 13);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_Enter), 13);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_Left), 37);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_Down), 40);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_A), 65);
    EXPECT_EQ(Binder::CodigoTecla(Qt::Key_Shift), 0);
}

} // namespace
