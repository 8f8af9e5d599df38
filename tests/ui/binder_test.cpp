#include "core/desktop_roteiro.h"
#include "core/teclas.h"
#include "core/tela.h"
#include "ui/binder.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <array>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// Two fields where Enter moves on and a leave check refuses "x", a button, a list, a box,
// two frames of options and a menu item.
class Formulario : public Tela {
  public:
    Formulario(Sessao &s, Desktop &d) : Tela("Formulario", "Formulário", s, d) {
        for (int i : {0, 1})
            Option1[i].Container = &Frame1;
        for (int i : {2, 3})
            Option1[i].Container = &Frame2;
        Option1[0].Value = Option1[2].Value = 1;
        registra("Text1", Text1);
        registra("Ok", Ok);
        registra("List1", List1);
        registra("Marca", Marca);
        registra("Frame1", Frame1);
        registra("Frame2", Frame2);
        registra("Option1", Option1);
        registra("Menu1", Menu1);
        liga("Menu1", Evento::Click, [this](int) { ++menus; });
        ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int) {
            if (k == tecla::Enter) SetFocus("Text1", i + 1 < 2 ? i + 1 : 0);
            if (k == tecla::F8) Text1[i].Text.clear();
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
    Quadro Frame1{"Ordem"};
    Quadro Frame2{"Saída"};
    Matriz<Opcao> Option1{"Nome", "Código", "Vexa", "Windows"};
    MenuItem Menu1{"&Relatório"};
    QStringList mudancas;
    int cliques = 0;
    int menus = 0;
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
        auto *lista = new QListView;
        lista->setObjectName("List1");
        l->addWidget(lista);
        auto *c = new QCheckBox;
        c->setObjectName("Marca");
        l->addWidget(c);
        for (int q : {1, 2}) {
            auto *quadro = new QGroupBox;
            quadro->setObjectName(QString("Frame%1").arg(q));
            auto *v = new QVBoxLayout(quadro);
            for (int i : {2 * q - 2, 2 * q - 1}) {
                auto *r = new QRadioButton(quadro);
                r->setObjectName(QString("Option1(%1)").arg(i));
                v->addWidget(r);
            }
            l->addWidget(quadro);
        }
        auto *menu = new QAction(&janela);
        menu->setObjectName("Menu1");
        janela.addAction(menu);
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

// Keys reach the model, which cuts at the field's maximum, moves the focus on Enter and takes
// its function keys by their classic codes; what the program changes shows on refresh.
TEST_F(BinderTeste, TecladoChegaAoModeloEOModeloAoWidget) {
    auto *t0 = w<QLineEdit>("Text1(0)");
    auto *t1 = w<QLineEdit>("Text1(1)");
    t0->setFocus();
    QTest::keyClicks(t0, "12345");
    EXPECT_EQ(tela.Text1[0].Text, "123");
    EXPECT_EQ(tela.mudancas, QStringList({"1", "12", "123"}));
    EXPECT_EQ(tela.Foco(), (RefControle{"Text1", 0}));
    QTest::keyClick(t0, Qt::Key_Return);
    EXPECT_TRUE(t1->hasFocus());
    EXPECT_EQ(tela.Foco(), (RefControle{"Text1", 1}));
    QTest::keyClicks(t1, "abc");
    QTest::keyClick(t1, Qt::Key_F8);
    EXPECT_EQ(t1->text(), "");

    tela.mudancas.clear();
    tela.Text1[1].Text = "do programa";
    tela.Refresh();
    EXPECT_EQ(t1->text(), "do programa");
    EXPECT_TRUE(tela.mudancas.isEmpty());
}

TEST_F(BinderTeste, CliqueListaECaixaEspelhamOEstado) {
    QTest::mouseClick(w<QPushButton>("Ok"), Qt::LeftButton);
    QTest::mouseClick(w<QPushButton>("Ok"), Qt::LeftButton);
    EXPECT_EQ(tela.cliques, 2);
    EXPECT_EQ(w<QPushButton>("Ok")->text(), "De novo");
    auto *lista = w<QListView>("List1");
    ASSERT_EQ(lista->model()->rowCount(), 2);
    EXPECT_EQ(lista->model()->index(1, 0).data().toString(), "linha 2");
    lista->setCurrentIndex(lista->model()->index(1, 0));
    EXPECT_EQ(tela.escolhida, 1);
    // On the box itself: the widget is wider than the box it draws.
    auto *marca = w<QCheckBox>("Marca");
    QTest::mouseClick(marca, Qt::LeftButton, {}, QPoint(6, marca->height() / 2));
    EXPECT_EQ(tela.Marca.Value, 1);
    EXPECT_FALSE(w<QLineEdit>("Text1(1)")->isEnabled());
}

// A leave handler that keeps the focus cancels the click that took it, whatever was clicked:
// the field keeps the focus, the handler doesn't run and the widget shows the model's state.
TEST_F(BinderTeste, CliqueDepoisDeSaidaRecusadaNaoCorre) {
    auto *campo = w<QLineEdit>("Text1(0)");
    const auto recusa = [&] {
        campo->setFocus();
        QTest::keyClicks(campo, "x");
    };
    recusa();
    QTest::mouseClick(w<QLineEdit>("Text1(1)"), Qt::LeftButton);
    EXPECT_TRUE(campo->hasFocus());
    EXPECT_EQ(campo->text(), "");

    recusa();
    QTest::mouseClick(w<QPushButton>("Ok"), Qt::LeftButton);
    EXPECT_EQ(tela.cliques, 0);
    EXPECT_TRUE(campo->hasFocus());

    recusa();
    auto *marca = w<QCheckBox>("Marca");
    QTest::mouseClick(marca, Qt::LeftButton, {}, QPoint(6, marca->height() / 2));
    EXPECT_EQ(tela.Marca.Value, 0);
    EXPECT_FALSE(marca->isChecked());

    recusa();
    QTest::mouseClick(w<QRadioButton>("Option1(1)"), Qt::LeftButton, {}, QPoint(6, 6));
    EXPECT_EQ(tela.Option1[1].Value, 0);
    EXPECT_FALSE(w<QRadioButton>("Option1(1)")->isChecked());
    EXPECT_TRUE(w<QRadioButton>("Option1(0)")->isChecked());
    EXPECT_TRUE(campo->hasFocus());
}

// Options group by their frame: a choice in one frame leaves the other frame's choice alone,
// on the model and on the widgets.
TEST_F(BinderTeste, OpcoesEscolhemDentroDoProprioQuadro) {
    struct Caso {
        int clicada;
        std::array<int, 4> valores;
    };
    const Caso casos[] = {
        {1, {0, 1, 1, 0}}, {3, {0, 1, 0, 1}}, {0, {1, 0, 0, 1}}, {0, {1, 0, 0, 1}}};
    for (const Caso &c : casos) {
        auto *r = w<QRadioButton>(qPrintable(QString("Option1(%1)").arg(c.clicada)));
        QTest::mouseClick(r, Qt::LeftButton, {}, QPoint(6, r->height() / 2));
        for (int i = 0; i < 4; ++i) {
            SCOPED_TRACE(QString("clicada %1, opção %2").arg(c.clicada).arg(i).toStdString());
            EXPECT_EQ(tela.Option1[i].Value, c.valores[i]);
            EXPECT_EQ(w<QRadioButton>(qPrintable(QString("Option1(%1)").arg(i)))->isChecked(),
                      c.valores[i] == 1);
        }
    }
}

TEST_F(BinderTeste, MenuRodaOHandlerSoQuandoHabilitado) {
    auto *menu = w<QAction>("Menu1");
    menu->trigger();
    EXPECT_EQ(tela.menus, 1);
    EXPECT_EQ(menu->text(), "&Relatório");
    tela.Menu1.Enabled = false;
    tela.Refresh();
    EXPECT_FALSE(menu->isEnabled());
    menu->trigger();
    EXPECT_EQ(tela.menus, 1);
}

// A list over a whole table: the view reads the rows it shows, not the table.
TEST_F(BinderTeste, ListaGrandeLeSoAsLinhasVisiveis) {
    int lidas = 0;
    tela.List1.Itens.fonte(100000, [&lidas](int i) {
        ++lidas;
        return QString("%1 - Nome").arg(i, 5, 10, QChar('0'));
    });
    tela.Refresh();
    auto *lista = w<QListView>("List1");
    ASSERT_EQ(lista->model()->rowCount(), 100000);
    QTest::qWait(0);
    lista->repaint();
    EXPECT_GT(lidas, 0);
    EXPECT_LT(lidas, 2000);
    // A pick far down reads that row, and the model hears of it.
    lista->setCurrentIndex(lista->model()->index(99999, 0));
    EXPECT_EQ(tela.escolhida, 99999);
    EXPECT_EQ(tela.List1.List(tela.List1.ListIndex), "99999 - Nome");
    EXPECT_LT(lidas, 4000);
}

TEST(CodigoTecla, TeclasComCodigoClassico) {
    const std::pair<Qt::Key, int> casos[] = {
        {Qt::Key_F3, 114},    {Qt::Key_F4, 115},   {Qt::Key_F8, 119},
        {Qt::Key_Return, 13}, {Qt::Key_Enter, 13}, {Qt::Key_Left, 37},
        {Qt::Key_Down, 40},   {Qt::Key_A, 65},     {Qt::Key_Shift, 0}};
    for (const auto &[tecla, codigo] : casos)
        EXPECT_EQ(Binder::CodigoTecla(tecla), codigo) << tecla;
}

} // namespace
