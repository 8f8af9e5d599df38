#include "core/conversoes.h"
#include "registers/bancos.h"
#include "registers/cidade.h"
#include "registers/favorec.h"
#include "registers/registros_apoio.h"
#include "registers/saida.h"

using namespace vexa;

namespace {

QList<QPair<QString, QString>> registros(int n, int largura, const QString &prefixo) {
    QList<QPair<QString, QString>> r;
    for (int i = 1; i <= n; ++i)
        r.append(
            {QString::number(i).rightJustified(largura, '0'), prefixo + " " + QString::number(i)});
    return r;
}

struct CasoLista {
    const char *nome;
    QString tabela;
    int destino;
    QList<QPair<QString, QString>> registros;
    int paginas;
};

class ListasImpressas : public ::testing::TestWithParam<CasoLista> {};

// Each page whole against its reference; pages are kept apart there by a form feed.
TEST_P(ListasImpressas, PaginasComoAsDeReferencia) {
    const CasoLista &c = GetParam();
    const QStringList paginas = paginas_lista(c.tabela, c.destino, c.registros, "221126");
    EXPECT_EQ(paginas.size(), c.paginas);
    teste::confere_referencia(paginas.join('\f'), QString("listas/") + c.nome + ".txt");
}

INSTANTIATE_TEST_SUITE_P(
    Listas, ListasImpressas,
    ::testing::Values(
        // A payee counts twice on the cheque printer: 16 a page.
        CasoLista{"favorecidos_vexa", "Favorecido", 0, registros(17, 5, "Favorecido"), 2},
        CasoLista{"favorecidos_win", "Favorecido", 1, registros(3, 5, "Favorecido"), 1},
        // Two cities a line; the odd one closes the list on a line of its own.
        CasoLista{"cidades_vexa", "Cidade", 0, registros(5, 5, "Cidade"), 1},
        CasoLista{"cidades_win", "Cidade", 1, registros(2, 5, "Cidade"), 1},
        CasoLista{"bancos_vexa",
                  "Bancos",
                  0,
                  {{"001", "Banco do Brasil"},
                   {"104", "Caixa Econômica Federal"},
                   {"237", "Bradesco"},
                   {"341", "Itaú Unibanco"}},
                  1},
        CasoLista{"bancos_win", "Transferencia", 1, {{"001", "Banco do Brasil"}}, 1}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST(ListasImpressasPaginacao, PaginaFechaEmTrintaEDoisOuCinquenta) {
    EXPECT_EQ(paginas_lista("Cidade", 0, registros(64, 5, "C"), "221126").size(), 2);
    EXPECT_EQ(paginas_lista("Cidade", 0, registros(65, 5, "C"), "221126").size(), 3);
    const QStringList win = paginas_lista("Bancos", 1, registros(51, 3, "B"), "221126");
    ASSERT_EQ(win.size(), 2);
    EXPECT_TRUE(win[1].contains("Pag:02/02"));
    EXPECT_EQ(win[1].count("\r\n"), 5 + 1);
}

class SaidaTeste : public teste::Registros {
  protected:
    void SetUp() override {
        Registros::SetUp();
        inclui(TabFavorecido, registros(17, 5, "Favorecido"));
    }
    Saida &dialogo(Tela &registro, const QString &botao) {
        registro.Clica(botao);
        auto *saida = d.Tela_<Saida>("Saida");
        EXPECT_NE(saida, nullptr);
        return *saida;
    }
};

TEST_F(SaidaTeste, FavorecidosNaImpressoraDeChequesPaginaAPagina) {
    Saida &saida = dialogo(abre<Favorec>(), "Imprimirfav");
    EXPECT_EQ(s.TabelaLista, "Favorecido");
    EXPECT_EQ(s.TotalLista, 17);
    EXPECT_EQ(saida.SSPanel1.Caption, "Total = 17 Favorecidos ");
    saida.Clica("Option1", 3);
    saida.Clica("Command1");
    EXPECT_EQ(d.Textos(), QStringList({"Insira o Documento.", "Insira o Documento."}));
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão de Relatório");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Impressão do Cheque");
    EXPECT_EQ(d.Mensagens[1].Icone_, Icone::Informacao);
    EXPECT_EQ(d.Mensagens[1].Botoes_, Botoes::OKCancel);
    const QStringList paginas =
        paginas_lista("Favorecido", 0, registros(17, 5, "Favorecido"), s.Hoje6);
    QStringList enviados;
    for (const auto &c : imp().Registro())
        if (c.Operacao == "FormataTX") enviados << c.Argumentos[0];
    EXPECT_EQ(enviados, QStringList({ConverteTexto(paginas[0]), ConverteTexto(paginas[1])}));
    EXPECT_FALSE(saida.Descarregada());
}

TEST_F(SaidaTeste, CancelarParaAsPaginasSeguintes) {
    Saida &saida = dialogo(abre<Favorec>(), "Imprimirfav");
    d.Respostas = {Resposta::OK, Resposta::Cancel};
    saida.Clica("Command1");
    EXPECT_EQ(imp().Chamadas().filter("FormataTX").size(), 1);
}

TEST_F(SaidaTeste, PaginaRecusadaPelaImpressoraParaAsSeguintes) {
    Saida &saida = dialogo(abre<Favorec>(), "Imprimirfav");
    imp().Falha("FormataTX", 9);
    saida.Clica("Command1");
    EXPECT_EQ(d.Textos(), QStringList({"Insira o Documento.",
                                       "Erro ao enviar as informações para a impressora."}));
    EXPECT_EQ(imp().Chamadas().filter("FormataTX").size(), 1);
}

TEST_F(SaidaTeste, BancosNaImpressoraDoSistemaPorNome) {
    Saida &saida = dialogo(abre<Bancos>(), "SSCommand1");
    EXPECT_EQ(s.TabelaBancos, 1);
    EXPECT_TRUE(saida.SSPanel1.Caption.endsWith(" Bancos Cadastrados"));
    saida.Clica("Option1", 1);
    // The order keeps its choice when the printer changes.
    EXPECT_EQ(saida.Option1[4].Value, 1);
    EXPECT_EQ(saida.Option1[0].Value, 0);
    saida.Clica("Command1");
    EXPECT_TRUE(d.Mensagens.isEmpty());
    ASSERT_EQ(d.Impressos.size(), 1);
    const DocumentoImpressao &doc = d.Impressos[0];
    EXPECT_EQ(doc.Titulo, "Relatório de Bancos");
    ASSERT_EQ(doc.Paginas.size(), 1);
    // By name: "Ailos" first; the first row carries the seven blanks of the head.
    EXPECT_EQ(doc.Paginas[0][1],
              "22/11/26               Relatório de Bancos                        "
              "Pag:01/01");
    EXPECT_EQ(doc.Paginas[0][5], "       085         Ailos");
    EXPECT_TRUE(imp().Chamadas().isEmpty());

    d.ErroImpressao = 482;
    saida.Clica("Command1");
    EXPECT_EQ(d.Textos(), QStringList({"Ocorreu erro 482! Possiveis Causas:\n"
                                       "- A impressora não foi encontrada!\n"
                                       "- A impressora está desligada!\n"
                                       "- Fim de papel ou papel enroscado!"}));
}

TEST_F(SaidaTeste, RegistroVazioNaoAbreODialogo) {
    abre<Cidade>().Clica("Imprime");
    EXPECT_EQ(d.Textos(), QStringList({"Não Existe Lançamentos a Serem Impressos"}));
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    EXPECT_EQ(d.Aberta("Saida"), nullptr);
    EXPECT_EQ(s.TabelaLista, "Cidade");
}

} // namespace
