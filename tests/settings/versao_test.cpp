#include "settings/versao.h"

#include <gtest/gtest.h>

using namespace vexa;

namespace {

using Pedido = LinhaComando::Pedido;

struct CasoLinha {
    const char *nome;
    QStringList argumentos;
    Pedido acao;
    QString texto; // the request's fields, or the beginning of the answer
};

void PrintTo(const CasoLinha &c, std::ostream *os) {
    *os << c.nome;
}

class LinhaComandoTeste : public ::testing::TestWithParam<CasoLinha> {};

// Options begin with "--"; everything else is another program's request, kept as it came.
TEST_P(LinhaComandoTeste, OpcoesOuPedido) {
    const CasoLinha c = GetParam();
    const LinhaComando l = le_linha_comando(c.argumentos);
    EXPECT_EQ(l.Acao, c.acao);
    if (c.acao == Pedido::Abrir)
        EXPECT_EQ(l.Campos, c.texto);
    else
        EXPECT_TRUE(l.Resposta.startsWith(c.texto)) << l.Resposta.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Linhas, LinhaComandoTeste,
    ::testing::Values(CasoLinha{"vazia", {}, Pedido::Abrir, ""},
                      CasoLinha{"pedido",
                                {"/B001/V1234,50/FMaria", "Silva"},
                                Pedido::Abrir,
                                "/B001/V1234,50/FMaria Silva"},
                      CasoLinha{"ajuda", {"--help"}, Pedido::Ajuda, "Uso: vexa [PEDIDO]\n"},
                      CasoLinha{"versao",
                                {"--version"},
                                Pedido::Versao,
                                "Vexa Plus " + VersaoPrograma() + " (compilado em " +
                                    DataCompilacao() + ")\n"},
                      CasoLinha{"desconhecida_com_pedido",
                                {"/B001", "--imprime"},
                                Pedido::Erro,
                                "vexa: opção desconhecida: --imprime\nUse \"vexa --help\""}),
    [](const auto &info) { return std::string(info.param.nome); });

} // namespace
