#include "core/desktop_roteiro.h"
#include "core/entrada.h"
#include "core/relogio.h"
#include "core/teclas.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// --- the typed date

struct Data {
    QString digitada;
    std::optional<QString> resultado; // none: refused
};
class DataDigitada : public ::testing::TestWithParam<Data> {
  protected:
    void SetUp() override { fixa_hoje(QDate(2026, 11, 23)); }
    void TearDown() override { fixa_hoje(QDate()); }
};

TEST_P(DataDigitada, FicaDdMmAaOuERecusada) {
    EXPECT_EQ(data_digitada(GetParam().digitada, "1126"), GetParam().resultado)
        << GetParam().digitada.toStdString();
}

// The entry screen's own table holds the common forms; these are the edges.
INSTANTIATE_TEST_SUITE_P(
    Formas, DataDigitada,
    ::testing::Values(Data{"", "23/11/26"}, // today
                      Data{"30", "30/11/26"},
                      Data{"31", std::nullopt}, // a day of November, which has 30
                      Data{"01/02/2003", "01/02/03"}, Data{"05031999", "05/03/99"},
                      Data{"00/01/99", std::nullopt}, Data{"01/13/99", std::nullopt},
                      // without a year, with one cut short, or not digits: no date
                      Data{"0102", std::nullopt}, Data{"5/3", std::nullopt},
                      Data{"05/0399", std::nullopt}, Data{"0503aa", std::nullopt}));

// --- the screen-wide rules, on a screen of three fields and a button

class TresCampos : public Tela {
  public:
    TresCampos(Sessao &s, Desktop &d) : Tela("TresCampos", "", s, d) {
        registra("Campo", Campo);
        registra("Botao", Botao_);
    }
    Matriz<Texto> Campo = Matriz<Texto>::comTamanho(3);
    Botao Botao_{"OK"};
};

class Regras : public ::testing::Test {
  protected:
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
    TresCampos t{s, d};
    const std::vector<RefControle> ordem{{"Campo", 0}, {"Campo", 2}, {"Botao", -1}};
};

struct Tecla {
    RefControle de;
    int tecla;
    QString foco; // where the focus ends
    bool tratada;
};
class EnterNaOrdem : public Regras, public ::testing::WithParamInterface<Tecla> {};

TEST_P(EnterNaOrdem, VaiAoSeguinte) {
    const Tecla &c = GetParam();
    t.SetFocus(c.de);
    int codigo = c.tecla;
    EXPECT_EQ(enter_avanca(t, c.de, codigo, ordem), c.tratada);
    EXPECT_EQ(t.Foco().texto(), c.foco);
    EXPECT_EQ(codigo, c.tratada ? 0 : c.tecla); // a handled Enter is spent
}

INSTANTIATE_TEST_SUITE_P(
    Teclas, EnterNaOrdem,
    ::testing::Values(Tecla{{"Campo", 0}, tecla::Enter, "Campo(2)", true},
                      Tecla{{"Campo", 2}, tecla::Enter, "Botao", true},
                      Tecla{{"Botao", -1}, tecla::Enter, "Botao", true}, // the last stays
                      Tecla{{"Campo", 1}, tecla::Enter, "Campo(1)", false},
                      Tecla{{"Campo", 0}, tecla::F4, "Campo(0)", false}));

struct Corte {
    int tamanho, ate, corta, fica;
};
class CortaTamanho : public Regras, public ::testing::WithParamInterface<Corte> {};

TEST_P(CortaTamanho, CortaComAMensagem) {
    const Corte &c = GetParam();
    t.Campo[1].Text = QString(c.tamanho, u'x');
    const bool cortou = corta_tamanho(t, t.Campo[1], c.ate, c.corta);
    EXPECT_EQ(t.Campo[1].Text.size(), c.fica);
    EXPECT_EQ(cortou, c.tamanho != c.fica);
    if (!cortou) {
        EXPECT_TRUE(d.Mensagens.isEmpty());
        return;
    }
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Tamanho Máximo deste campo...");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OK);
}

INSTANTIATE_TEST_SUITE_P(Tamanhos, CortaTamanho,
                         ::testing::Values(Corte{3, 4, 3, 3}, Corte{4, 4, 3, 3},
                                           Corte{30, 21, 15, 15}, // the city: cut short of its stop
                                           Corte{0, 1, 0, 0}));

struct Pergunta {
    Resposta resposta;
    bool segue;
};
class PedeDocumento : public Regras, public ::testing::WithParamInterface<Pergunta> {};

TEST_P(PedeDocumento, SoOkSegue) {
    d.Respostas = {GetParam().resposta};
    EXPECT_EQ(pede_documento(d, "Impressão do Verso"), GetParam().segue);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Insira o Documento.");
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Verso");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OKCancel);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Informacao);
}

INSTANTIATE_TEST_SUITE_P(Respostas, PedeDocumento,
                         ::testing::Values(Pergunta{Resposta::OK, true},
                                           Pergunta{Resposta::Cancel, false}));

} // namespace
