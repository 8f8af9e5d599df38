// The page of a copy composed whole, and the rules on the copy layout's positions.
#include "apoio/referencia.h"
#include "copy/cmpcopia.h"
#include "registers/regras.h"

#include <functional>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

// A layout with every item apart: bank and number on top, amount to the right, the words,
// the payee, city and date, the comment below.
LayoutCopia layout_padrao() {
    LayoutCopia l;
    l.l = {0, 2, 5, 6, 8, 10, 1, 2, 14};
    l.c = {0, 60, 5, 5, 5, 30, 52, 56, 68, 2, 2, 5};
    return l;
}

ChequeCopia cheque_completo() {
    ChequeCopia c;
    c.Banco = "237";
    c.NomeBanco = "BRADESCO";
    c.Valor = "1.234,56";
    c.Favorecido = "José Antônio da Silva";
    c.Cidade = "Curitiba";
    c.Data = "05/02/99";
    c.Numero = "000123";
    c.Comentarios = {"Pagamento de aluguel", "Referente a janeiro", "Sala 12"};
    return c;
}

const QString ExtensoCurto = "Um Mil, Duzentos e Trinta e Quatro Reais e Cinquenta e Seis Centavos";
// 109 characters whose 81st falls inside "Reais": the first line gives back that word and
// ends at the blank before it.
const QString ExtensoLongo = "Seis Milhões, Seiscentos e Sessenta e Seis Mil, Seiscentos e "
                             "Sessenta e Seis Reais e Sessenta e Seis Centavos";

struct CasoPagina {
    const char *Referencia;
    std::function<void(LayoutCopia &, ChequeCopia &, QString &)> Prepara;
};

class PaginaCopia : public ::testing::TestWithParam<CasoPagina> {};

TEST_P(PaginaCopia, ComposedWholeAsTheReference) {
    LayoutCopia l = layout_padrao();
    ChequeCopia c = cheque_completo();
    QString extenso = ExtensoCurto;
    GetParam().Prepara(l, c, extenso);
    const auto pagina = MontaPagina(l, c, extenso);
    ASSERT_TRUE(pagina.has_value());
    teste::confere_referencia(*pagina, QString("copia/") + GetParam().Referencia);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, PaginaCopia,
    ::testing::Values(
        // Every item where the layout puts it; the year 99 is 1999.
        CasoPagina{"completo.txt", [](LayoutCopia &, ChequeCopia &, QString &) {}},
        // No number, a date of 2005, no comments: those lines stay empty.
        CasoPagina{"sem_numero.txt",
                   [](LayoutCopia &, ChequeCopia &c, QString &) {
                       c.Numero.clear();
                       c.Data = "15/08/05";
                       c.Comentarios = {QString(), QString(), QString()};
                   }},
        // A payee and an amount that would pass column 90 end at column 80; the words break
        // at the last blank inside 81, "Reais" going to the second line; a day placed past
        // column 80 is not carried; an item behind a line already full is put right after it.
        CasoPagina{"transborda.txt",
                   [](LayoutCopia &l, ChequeCopia &c, QString &e) {
                       e = ExtensoLongo;
                       c.Valor = "6.666.666,66";
                       c.Favorecido = "Companhia Paranaense de Distribuição de Energia";
                       l.c[1] = 80;
                       l.c[4] = 50;
                       l.c[6] = 85;
                       l.l[7] = 5;
                       l.c[10] = 70;
                       c.Numero = "1234567";
                   }},
        // A comment whose first line is past 20 keeps its three lines on the page.
        CasoPagina{"comentario_rodape.txt",
                   [](LayoutCopia &l, ChequeCopia &, QString &) { l.l[8] = 25; }}));

TEST(PaginaCopia, WordsSplitOnlyFrom80CharactersAndLinesEndWithCrLfButTheLast) {
    const QString setenta_e_nove = QString("Palavra ").repeated(10).left(79);
    const auto p = MontaPagina(layout_padrao(), cheque_completo(), setenta_e_nove);
    ASSERT_TRUE(p);
    const QStringList linhas = p->split("\r\n");
    EXPECT_EQ(linhas.size(), LinhasTexto);
    EXPECT_EQ(p->count("\r\n"), LinhasTexto - 1);
    EXPECT_EQ(linhas[4], QString(5, u' ') + setenta_e_nove);
    EXPECT_EQ(linhas[5], QString()); // the second line of the words stays empty
    EXPECT_EQ(nome_arquivo_copia("050299"), "cop0502.99");
}

// Lines or columns off the page: no page at all.
TEST(PaginaCopia, ForaDaPaginaNaoSeMonta) {
    const std::function<void(LayoutCopia &, ChequeCopia &)> casos[] = {
        [](LayoutCopia &l, ChequeCopia &) { l.l[1] = 0; },
        [](LayoutCopia &l, ChequeCopia &) { l.l[5] = 23; },
        [](LayoutCopia &l, ChequeCopia &) { l.l[8] = 0; }, // the comment
        [](LayoutCopia &l, ChequeCopia &c) { l.c[10] = 91, c.Numero.clear(); },
        [](LayoutCopia &l, ChequeCopia &c) { l.c[10] = -1, c.Numero.clear(); }};
    for (int i = 0; i < int(std::size(casos)); ++i) {
        LayoutCopia l = layout_padrao();
        ChequeCopia c = cheque_completo();
        casos[i](l, c);
        EXPECT_FALSE(MontaPagina(l, c, ExtensoCurto).has_value()) << i;
    }
}

// --- the copy layout's positions

using C = CampoCopia;
constexpr C Val = C::Valor, Fav = C::Favorecido, Cid = C::Cidade, Dia = C::Dia, Mes = C::Mes,
            Ano = C::Ano, Bco = C::Banco, Num = C::NumeroCheque;

// Every field apart on its own line; the date on the city's line in order. Line 5 is free.
QList<PosicaoCopia> posicoes_validas() {
    return {{2, 60}, {8, 5}, {10, 5}, {10, 30}, {10, 40}, {10, 60}, {1, 2}, {3, 2}};
}

// A placement of some fields over the valid one, the blamed field and the numbers of its
// message. When Passa, it just passes, and the blamed field one column closer to the field
// before it fails with the message; else it fails as it stands.
struct CasoPosicao {
    const char *Nome;
    QList<std::pair<C, PosicaoCopia>> Mudancas;
    C Culpado;
    int Tamanho;
    const char *Frase;
    int Limite;
    bool Passa = true;
};

class PosicaoCopiaRegras : public ::testing::TestWithParam<CasoPosicao> {};

TEST_P(PosicaoCopiaRegras, BlamesTheFirstPairOutOfOrder) {
    const CasoPosicao &caso = GetParam();
    QList<PosicaoCopia> p = posicoes_validas();
    ASSERT_FALSE(VerificaPosicaoCopia(p).has_value());
    for (const auto &[campo, pos] : caso.Mudancas)
        p[int(campo)] = pos;
    if (caso.Passa) {
        const auto passa = VerificaPosicaoCopia(p);
        ASSERT_FALSE(passa.has_value()) << passa->Texto.toStdString();
        --p[int(caso.Culpado)].Coluna;
    }
    const auto falha = VerificaPosicaoCopia(p);
    ASSERT_TRUE(falha.has_value());
    EXPECT_EQ(falha->Culpado, caso.Culpado);
    const QString
        campo = QStringList{"Valor", "Favorecido", "Cidade", "Dia",
                            "Mês",   "Ano",        "Banco",  "Nº do Cheque"}[int(caso.Culpado)];
    EXPECT_EQ(falha->Texto,
              "Há problemas no posicionamento do campo " + campo + ". O campo " + campo +
                  " não está respeitando o tamanho de " + QString::number(caso.Tamanho) +
                  " posições " + QString::fromUtf8(caso.Frase) +
                  " ou não está respeitando o limite de " + QString::number(caso.Limite) +
                  " posições em relação a última coluna do cheque ( coluna 80). Por "
                  "favor verifique.");
}

// Same-line pairs on line 5, the field further left placed so that the other one ends at
// column 80 where it fits.
using P = CasoPosicao;
INSTANTIATE_TEST_SUITE_P(
    Casos, PosicaoCopiaRegras,
    ::testing::Values(
        P{"ValorBanco", {{Val, {5, 25}}, {Bco, {5, 44}}}, Bco, 19, "do valor", 36},
        P{"BancoValor", {{Bco, {5, 25}}, {Val, {5, 62}}}, Val, 37, "do banco", 18},
        P{"ValorFavorecido", {{Val, {5, 14}}, {Fav, {5, 33}}}, Fav, 19, "do valor", 47},
        P{"FavorecidoValor", {{Fav, {5, 14}}, {Val, {5, 62}}}, Val, 48, "do favorecido", 18},
        P{"ValorCidade", {{Val, {5, 41}}, {Cid, {5, 60}}}, Cid, 19, "do valor", 20},
        P{"CidadeValor", {{Cid, {5, 1}}, {Val, {5, 22}}}, Val, 21, "da cidade", 18},
        P{"ValorNumero", {{Val, {5, 47}}, {Num, {5, 66}}}, Num, 19, "do valor", 14},
        P{"NumeroValor", {{Num, {5, 47}}, {Val, {5, 62}}}, Val, 15, "do Nº do cheque", 18},
        // Bank and payee together are wider than the sheet: on one line they always fail.
        P{"BancoFavorecido", {{Bco, {5, 1}}, {Fav, {5, 38}}}, Fav, 37, "do banco", 47, false},
        P{"FavorecidoBanco", {{Fav, {5, 1}}, {Bco, {5, 49}}}, Bco, 48, "do favorecido", 36, false},
        P{"BancoCidade", {{Bco, {5, 23}}, {Cid, {5, 60}}}, Cid, 37, "do banco", 20},
        P{"CidadeBanco", {{Cid, {5, 1}}, {Bco, {5, 22}}}, Bco, 21, "da cidade", 36},
        P{"BancoNumero", {{Bco, {5, 29}}, {Num, {5, 66}}}, Num, 37, "do banco", 14},
        P{"NumeroBanco", {{Num, {5, 29}}, {Bco, {5, 44}}}, Bco, 15, "do nº do cheque", 36},
        P{"FavorecidoCidade", {{Fav, {5, 12}}, {Cid, {5, 60}}}, Cid, 48, "do favorecido", 20},
        P{"CidadeFavorecido", {{Cid, {5, 1}}, {Fav, {5, 22}}}, Fav, 21, "da cidade", 47},
        P{"FavorecidoNumero", {{Fav, {5, 18}}, {Num, {5, 66}}}, Num, 48, "do favorecido", 14},
        P{"NumeroFavorecido", {{Num, {5, 18}}, {Fav, {5, 33}}}, Fav, 15, "do Nº do Cheque", 47},
        P{"CidadeNumero", {{Cid, {5, 1}}, {Num, {5, 22}}}, Num, 21, "da cidade", 14},
        P{"NumeroCidade", {{Num, {5, 45}}, {Cid, {5, 60}}}, Cid, 15, "do nº do cheque", 20},
        // The date rows hold on any line; the numbers of rows 12 and 13 are the message's own.
        P{"DiaCidade",
          {{Dia, {10, 57}}, {Cid, {10, 60}}, {Mes, {10, 60}}, {Ano, {10, 70}}},
          Cid,
          3,
          "do dia",
          20},
        P{"CidadeDia",
          {{Cid, {10, 57}}, {Dia, {10, 78}}, {Mes, {10, 60}}, {Ano, {10, 70}}},
          Dia,
          21,
          "da cidade",
          2},
        P{"DiaMes", {{Dia, {10, 30}}, {Mes, {10, 33}}}, Mes, 3, "do dia", 9},
        P{"MesDia", {{Mes, {10, 30}}, {Dia, {10, 40}}}, Dia, 3, "do mês", 2},
        P{"MesAno", {{Mes, {16, 66}}, {Ano, {12, 76}}}, Ano, 10, "do mês", 9},
        P{"AnoMes", {{Ano, {10, 35}}, {Mes, {10, 40}}}, Mes, 3, "do ano", 9},
        // On the same column the first field of the row counts as the one further left.
        P{"MesmaColuna", {{Fav, {2, 60}}}, Fav, 19, "do valor", 47, false},
        // Rows 1 and 2 both fail, and so does the date: the first row in order is told.
        P{"PrimeiraFalhaVence",
          {{Val, {5, 25}}, {Bco, {5, 43}}, {Fav, {5, 30}}, {Mes, {10, 31}}},
          Bco,
          19,
          "do valor",
          36,
          false}),
    [](const auto &info) { return std::string(info.param.Nome); });

} // namespace
