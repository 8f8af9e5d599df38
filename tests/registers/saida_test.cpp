#include "catalogo/telas.h"
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
        // 50 a page on the system printer, and the payees' head of the first page differs.
        CasoLista{"favorecidos_win", "Favorecido", 1, registros(51, 5, "Favorecido"), 2},
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

// A list whose rows fill its pages exactly, or spill one row over: every head counts the pages
// really written. 32 rows a page on the cheque printer, 50 on the system printer.
struct CasoPaginaCheia {
    const char *nome;
    QString tabela;
    int destino;
    int registros;
    int paginas;
};

class PaginaCheia : public ::testing::TestWithParam<CasoPaginaCheia> {};

TEST_P(PaginaCheia, TotalDoCabecalhoEOQueSaiu) {
    const CasoPaginaCheia &c = GetParam();
    const QStringList paginas =
        paginas_lista(c.tabela, c.destino, registros(c.registros, 5, "R"), "221126");
    ASSERT_EQ(paginas.size(), c.paginas);
    for (int p = 0; p < paginas.size(); ++p)
        EXPECT_TRUE(paginas[p].contains(
            QString("Pag:%1/%2").arg(p + 1, 2, 10, QChar('0')).arg(c.paginas, 2, 10, QChar('0'))))
            << paginas[p].section("\r\n", 1, 1).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Listas, PaginaCheia,
    ::testing::Values(CasoPaginaCheia{"FavorecidosVexa", "Favorecido", 0, 16, 1},
                      CasoPaginaCheia{"FavorecidosVexaDuas", "Favorecido", 0, 32, 2},
                      CasoPaginaCheia{"CidadesVexa", "Cidade", 0, 32, 1},
                      CasoPaginaCheia{"CidadesVexaDuas", "Cidade", 0, 64, 2},
                      CasoPaginaCheia{"CidadesVexaTres", "Cidade", 0, 65, 3},
                      CasoPaginaCheia{"BancosWinUmaAMais", "Bancos", 1, 51, 2},
                      CasoPaginaCheia{"CidadesWin", "Cidade", 1, 50, 1},
                      CasoPaginaCheia{"BancosVexaDuas", "Bancos", 0, 64, 2},
                      CasoPaginaCheia{"BancosWinDuas", "Transferencia", 1, 100, 2}),
    [](const auto &info) { return std::string(info.param.nome); });

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

// The question before the first page on the cheque printer, by list; Cancel there sends
// nothing at all.
struct CasoPrimeira {
    const char *nome;
    QString tela, botao, titulo;
};

class PrimeiraPagina : public SaidaTeste, public ::testing::WithParamInterface<CasoPrimeira> {};

TEST_P(PrimeiraPagina, PerguntaComOTituloDaListaECancelarNaoEnviaNada) {
    const CasoPrimeira &c = GetParam();
    inclui(TabCidade, registros(3, 5, "Cidade"));
    Tela *registro = d.Abre(cria_tela(c.tela, s, d));
    ASSERT_NE(registro, nullptr);
    Saida &saida = dialogo(*registro, c.botao);
    d.Respostas = {Resposta::Cancel};
    saida.Clica("Command1");
    ASSERT_EQ(d.Textos(), QStringList({"Insira o Documento."}));
    EXPECT_EQ(d.Mensagens[0].Titulo, c.titulo);
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::OKCancel);
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Informacao);
    EXPECT_TRUE(imp().Chamadas().isEmpty());
    EXPECT_FALSE(saida.Descarregada());
}

INSTANTIATE_TEST_SUITE_P(
    Listas, PrimeiraPagina,
    ::testing::Values(CasoPrimeira{"Favorecidos", telas::Favorec, "Imprimirfav",
                                   "Impressão de Relatório"},
                      CasoPrimeira{"Cidades", telas::Cidade, "Imprime", "Impressão de Relatório"},
                      CasoPrimeira{"Bancos", telas::Bancos, "SSCommand1", "Impressão"}),
    [](const auto &info) { return std::string(info.param.nome); });

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

// The eight selects: each list by code and by name, told by its first two rows.
struct CasoOrdem {
    const char *nome;
    QString lista; // TabelaLista
    int tabelaBancos;
    QString ordem;
    QString primeira, segunda;
};

class OrdemDasListas : public SaidaTeste, public ::testing::WithParamInterface<CasoOrdem> {};

TEST_P(OrdemDasListas, PrimeirasLinhasNaImpressoraDoSistema) {
    const CasoOrdem &c = GetParam();
    inclui(TabCidade, {{"00001", "Maringá"}, {"00002", "curitiba"}, {"00003", "Álvares"}});
    inclui(TabTransferencia, {{"001", "Zeta"}, {"341", "Alfa"}});
    s.TabelaBancos = c.tabelaBancos;
    if (c.lista == "Bancos")
        ImprimeBancos(s, d, 1, c.ordem);
    else
        ImprimeCadastro(s, d, 1, c.ordem, c.lista);
    ASSERT_EQ(d.Impressos.size(), 1);
    const QStringList &pagina = d.Impressos[0].Paginas[0];
    ASSERT_GE(pagina.size(), 7);
    EXPECT_EQ(pagina[5], "       " + c.primeira);
    EXPECT_EQ(pagina[6], c.segunda);
}

INSTANTIATE_TEST_SUITE_P(
    Selects, OrdemDasListas,
    ::testing::Values(
        CasoOrdem{"FavorecidoCodigo", "Favorecido", 0, "0", "00001       Favorecido 1",
                  "00002       Favorecido 2"},
        CasoOrdem{"FavorecidoNome", "Favorecido", 0, "1", "00001       Favorecido 1",
                  "00010       Favorecido 10"},
        CasoOrdem{"CidadeCodigo", "Cidade", 0, "0", "00001       Maringá", "00002       curitiba"},
        // By name case and accents don't count.
        CasoOrdem{"CidadeNome", "Cidade", 0, "1", "00003       Álvares", "00002       curitiba"},
        CasoOrdem{"BancosCodigo", "Bancos", 1, "0", "001         Banco do Brasil",
                  "003         Banco da Amazônia"},
        CasoOrdem{"BancosNome", "Bancos", 1, "1", "085         Ailos",
                  "246         Banco ABC Brasil"},
        CasoOrdem{"TransferenciaCodigo", "Bancos", 2, "0", "001         Zeta", "341         Alfa"},
        CasoOrdem{"TransferenciaNome", "Bancos", 2, "1", "341         Alfa", "001         Zeta"}),
    [](const auto &info) { return std::string(info.param.nome); });

TEST_F(SaidaTeste, RegistroVazioNaoAbreODialogo) {
    abre<Cidade>().Clica("Imprime");
    EXPECT_EQ(d.Textos(), QStringList({"Não Existe Lançamentos a Serem Impressos"}));
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    EXPECT_EQ(d.Aberta("Saida"), nullptr);
    EXPECT_EQ(s.TabelaLista, "Cidade");
}

} // namespace
