#include "core/desktop_roteiro.h"
#include "core/tela.h"

#include <QTemporaryDir>
#include <array>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// A small screen whose handlers write down what ran, in order.
class TelaTeste : public Tela {
  public:
    TelaTeste(Sessao &s, Desktop &d) : Tela("Teste", "Teste", s, d) {
        registra("Text1", Text1);
        registra("Botao", Ok);
        registra("Titulo", Titulo);
        for (Evento e : {Evento::Enter, Evento::GotFocus, Evento::LostFocus, Evento::Change})
            liga("Text1", e, [this, e](int i) { anota(e, "Text1(" + QString::number(i) + ")"); });
        liga("Text1", Evento::LostFocus, [this](int i) {
            anota(Evento::LostFocus, "Text1(" + QString::number(i) + ")");
            if (prende == i) SetFocus("Text1", i);
            if (desvia >= 0 && i == 0) SetFocus("Text1", desvia);
        });
        liga("Botao", Evento::Enter, [this](int) { anota(Evento::Enter, "Botao"); });
        liga("Botao", Evento::Click, [this](int) { anota(Evento::Click, "Botao"); });
    }
    Matriz<Texto> Text1{{0, Texto("", 3)}, {1, Texto()}, {2, Texto()}, {4, Texto()}};
    Botao Ok{"OK"};
    Rotulo Titulo{"Título"};
    QStringList ordem;
    int prende = -1;
    int desvia = -1;

  private:
    void anota(Evento e, const QString &quem) {
        static const char *nomes[] = {"Click",     "DblClick", "Change",   "Enter", "GotFocus",
                                      "LostFocus", "KeyDown",  "KeyPress", "Timer"};
        // LostFocus is noted by its own handler, which replaces the plain one.
        ordem.append(quem + "." + nomes[int(e)]);
    }
};

class TelaBase : public ::testing::Test {
  protected:
    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
    TelaTeste tela{sessao, desktop};
};

// A move of the focus from Text1(0) to Text1(1): the new control's Enter runs before the old
// one's LostFocus, which may keep the focus (prende) or send it elsewhere (desvia); only the
// control that ends with the focus gets GotFocus.
TEST_F(TelaBase, MoveDeFocoEntraAntesDeSairEASaidaDecide) {
    const std::array<int, 3> casos[] = {
        {-1, -1, 1}, {0, -1, 0}, {-1, 4, 4}}; // prende, desvia, foco
    for (const auto &[prende, desvia, foco] : casos) {
        SCOPED_TRACE(testing::Message() << prende << ' ' << desvia);
        tela.prende = tela.desvia = -1;
        tela.SetFocus("Text1", 0);
        tela.prende = prende;
        tela.desvia = desvia;
        tela.ordem.clear();
        tela.SetFocus("Text1", 1);
        EXPECT_EQ(tela.Foco(), (RefControle{"Text1", foco}));
        EXPECT_EQ(tela.ordem.mid(0, 2), QStringList({"Text1(1).Enter", "Text1(0).LostFocus"}));
        EXPECT_EQ(tela.ordem.contains("Text1(1).GotFocus"), foco == 1);
        if (foco != 0) {
            EXPECT_EQ(tela.ordem.last(), QString("Text1(%1).GotFocus").arg(foco));
        }
    }
}

TEST_F(TelaBase, CliqueNaoCorreQuandoOCampoDeixadoPrendeOFoco) {
    tela.SetFocus("Text1", 2);
    tela.prende = 2;
    tela.Clica("Botao");
    EXPECT_FALSE(tela.ordem.contains("Botao.Click"));
    tela.prende = -1;
    tela.Clica("Botao");
    EXPECT_TRUE(tela.ordem.contains("Botao.Click"));
}

TEST_F(TelaBase, ControlesDesabilitadosNaoRecebemFocoNemClique) {
    tela.Ok.Enabled = false;
    tela.Clica("Botao");
    tela.SetFocus("Botao");
    EXPECT_FALSE(tela.ordem.contains("Botao.Click"));
    EXPECT_FALSE(tela.Foco().valida());
    tela.SetFocus("Titulo");
    EXPECT_FALSE(tela.Foco().valida());
}

TEST_F(TelaBase, DigitarParaNoMaximoEDisparaChange) {
    tela.Digita("Text1", 0, "12345");
    EXPECT_EQ(tela.Text1[0].Text, "123");
    EXPECT_TRUE(tela.ordem.contains("Text1(0).Change"));
}

// Escape presses the button that leaves the screen: Cancelar before Fechar before Sair,
// whatever the access key; with none, or that one disabled, Escape does nothing.
struct CasoEsc {
    std::array<const char *, 3> legendas;
    bool habilitado;
    int apertado; // -1: none
};

class TeclaEsc : public ::testing::TestWithParam<CasoEsc> {};

TEST_P(TeclaEsc, ApertaOBotaoQueSaiDaTela) {
    class Tela3 : public Tela {
      public:
        Tela3(Sessao &s, Desktop &d, const CasoEsc &c) : Tela("Teste", "Teste", s, d) {
            B = Matriz<Botao>{c.legendas[0], c.legendas[1], c.legendas[2]};
            registra("B", B);
            liga("B", Evento::Click, [this](int i) { apertado = i; });
        }
        Matriz<Botao> B;
        int apertado = -1;
    };
    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
    const CasoEsc &c = GetParam();
    Tela3 tela(sessao, desktop, c);
    for (auto &[i, b] : tela.B)
        b.Enabled = c.habilitado;
    EXPECT_EQ(tela.TeclaEsc(), c.apertado >= 0);
    EXPECT_EQ(tela.apertado, c.apertado);
}

INSTANTIATE_TEST_SUITE_P(Legendas, TeclaEsc,
                         ::testing::Values(CasoEsc{{"Sai&r", "Fecha&r", "&OK"}, true, 1},
                                           CasoEsc{{"Sair", "&Cancelar", "&Fechar"}, true, 1},
                                           CasoEsc{{"Sair", "OK", "Limpar"}, true, 0},
                                           CasoEsc{{"OK", "Salvar", "Fecharia"}, true, -1},
                                           CasoEsc{{"OK", "Fechar", "Limpar"}, false, -1}));

// Options in two frames: a click chooses within its own frame only; options outside any
// frame are the window's own group.
TEST(OpcoesPorQuadro, CliqueEscolheSoNoProprioQuadro) {
    struct Formulario : Tela {
        Formulario(Sessao &s, Desktop &d) : Tela("Opcoes", "Opções", s, d) {
            for (int i : {0, 1})
                Option1[i].Container = &Frame1;
            for (int i : {2, 3})
                Option1[i].Container = &Frame2;
            Option1[0].Value = Option1[2].Value = Option1[4].Value = 1;
            registra("Frame1", Frame1);
            registra("Frame2", Frame2);
            registra("Option1", Option1);
        }
        Quadro Frame1{"Ordem"};
        Quadro Frame2{"Saída"};
        Matriz<Opcao> Option1 = Matriz<Opcao>::comTamanho(6);
    };
    QTemporaryDir pasta;
    Sessao sessao{pasta.path()};
    DesktopRoteiro desktop;
    Formulario f{sessao, desktop};
    struct Caso {
        int clicada;
        std::array<int, 6> valores;
    };
    const Caso casos[] = {{1, {0, 1, 1, 0, 1, 0}},
                          {3, {0, 1, 0, 1, 1, 0}},
                          {5, {0, 1, 0, 1, 0, 1}},
                          {0, {1, 0, 0, 1, 0, 1}}};
    for (const Caso &c : casos) {
        f.Clica("Option1", c.clicada);
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(f.Option1[i].Value, c.valores[i]) << "clicada " << c.clicada << ", " << i;
    }
}

// A list's rows from a source read only the rows asked for, and compare, count and grow as
// its own texts do.
TEST(LinhasLista, FonteLeSoOPedidoEComparaComoTextos) {
    int lidas = 0;
    LinhasLista linhas;
    const quint64 antes = linhas.versao();
    linhas.fonte(100000, [&lidas](int i) {
        ++lidas;
        return QString::number(i);
    });
    EXPECT_NE(linhas.versao(), antes);
    EXPECT_EQ(linhas.size(), 100000);
    EXPECT_EQ(lidas, 0);
    EXPECT_EQ(linhas.at(99999), "99999");
    EXPECT_EQ(linhas.at(100000), "");
    EXPECT_EQ(linhas.at(-1), "");
    EXPECT_EQ(lidas, 1);

    Lista lista;
    lista.Itens.fonte(3, [](int i) { return QString("linha %1").arg(i); });
    EXPECT_EQ(lista.Itens, QStringList({"linha 0", "linha 1", "linha 2"}));
    EXPECT_TRUE(lista.Itens.contains("linha 2"));
    EXPECT_EQ(lista.List(1), "linha 1");
    lista.AddItem("outra");
    EXPECT_EQ(lista.ListCount(), 4);
    EXPECT_EQ(lista.Itens.first(), "linha 0");
    EXPECT_EQ(lista.List(3), "outra");
    lista.ListIndex = 2;
    lista.Clear();
    EXPECT_TRUE(lista.Itens.isEmpty());
    EXPECT_EQ(lista.ListIndex, -1);
}

TEST(RefControle, LeNomeEIndice) {
    EXPECT_EQ(RefControle::de("Text1(12)"), (RefControle{"Text1", 12}));
    EXPECT_EQ(RefControle::de("CheckBox"), (RefControle{"CheckBox", -1}));
    EXPECT_FALSE(RefControle::de("qt_spinbox_lineedit").Nome.isEmpty());
    EXPECT_FALSE(RefControle::de("Text1(").valida());
    EXPECT_FALSE(RefControle::de("").valida());
}

TEST(DesktopRoteiro, RespondeDaListaEDepoisComOPrimeiroBotao) {
    DesktopRoteiro d;
    d.Respostas = {Resposta::No};
    EXPECT_EQ(d.MsgBox("a", Botoes::YesNo, "t", Icone::Pergunta), Resposta::No);
    EXPECT_EQ(d.MsgBox("b", Botoes::YesNo), Resposta::Yes);
    EXPECT_EQ(d.MsgBox("c", Botoes::OKCancel), Resposta::OK);
    ASSERT_EQ(d.Mensagens.size(), 3);
    EXPECT_EQ(d.Mensagens[0].Titulo, "t");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Pergunta);
    EXPECT_EQ(d.Textos(), QStringList({"a", "b", "c"}));
}

} // namespace
