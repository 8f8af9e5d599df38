// The page of a copy composed whole, and the rules on the copy layout's positions.
#include "apoio/referencia.h"
#include "copy/cmpcopia.h"
#include "registers/regras.h"

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

TEST(PaginaCopia, WordsSplitOnlyFrom80Characters) {
    LayoutCopia l = layout_padrao();
    const QString setenta_e_nove = QString("Palavra ").repeated(10).left(79);
    ASSERT_EQ(setenta_e_nove.size(), 79);
    const auto p = MontaPagina(l, cheque_completo(), setenta_e_nove);
    ASSERT_TRUE(p);
    const QStringList linhas = p->split("\r\n");
    EXPECT_EQ(linhas[4], QString(5, u' ') + setenta_e_nove);
    EXPECT_EQ(linhas[5], QString()); // the second line of the words stays empty
}

TEST(PaginaCopia, LinesEndWithCrLfButTheLast) {
    const auto p = MontaPagina(layout_padrao(), cheque_completo(), ExtensoCurto);
    ASSERT_TRUE(p);
    EXPECT_EQ(p->count("\r\n"), LinhasTexto - 1);
    EXPECT_EQ(p->split("\r\n").size(), LinhasTexto);
}

struct CasoForaDaPagina {
    const char *Nome;
    std::function<void(LayoutCopia &, ChequeCopia &)> Prepara;
};

class ForaDaPagina : public ::testing::TestWithParam<CasoForaDaPagina> {};

TEST_P(ForaDaPagina, IsNotComposed) {
    LayoutCopia l = layout_padrao();
    ChequeCopia c = cheque_completo();
    GetParam().Prepara(l, c);
    EXPECT_FALSE(MontaPagina(l, c, ExtensoCurto).has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ForaDaPagina,
    ::testing::Values(
        CasoForaDaPagina{"LinhaZero", [](LayoutCopia &l, ChequeCopia &) { l.l[1] = 0; }},
        CasoForaDaPagina{"Linha23", [](LayoutCopia &l, ChequeCopia &) { l.l[5] = 23; }},
        CasoForaDaPagina{"ComentarioNaLinhaZero",
                         [](LayoutCopia &l, ChequeCopia &) { l.l[8] = 0; }},
        CasoForaDaPagina{"SemNumeroNaColuna91",
                         [](LayoutCopia &l, ChequeCopia &c) {
                             l.c[10] = 91;
                             c.Numero.clear();
                         }},
        CasoForaDaPagina{"ColunaNegativa",
                         [](LayoutCopia &l, ChequeCopia &c) {
                             l.c[10] = -1;
                             c.Numero.clear();
                         }}),
    [](const auto &info) { return std::string(info.param.Nome); });

TEST(ArquivoCopia, NamedByDayMonthAndYear) {
    EXPECT_EQ(nome_arquivo_copia("050299"), "cop0502.99");
    EXPECT_EQ(nome_arquivo_copia("221126"), "cop2211.26");
}

TEST(AvisoLinhas, OneLineForEachLineLongerThan80) {
    const QString ok(80, u'x'), longa(81, u'x');
    EXPECT_EQ(aviso_linhas(ok + "\n" + ok), QString());
    EXPECT_EQ(aviso_linhas(ok + "\n" + longa + "\n\n" + longa),
              "\nLinha 2 Extrapola Tamanho Maximo!\nLinha 4 Extrapola Tamanho Maximo!");
}

// --- the copy layout's positions

using C = CampoCopia;

// Every field apart on its own line; the date on the city's line in order. Line 5 is free.
QList<PosicaoCopia> posicoes_validas() {
    QList<PosicaoCopia> p(8);
    p[int(C::Valor)] = {2, 60};
    p[int(C::Favorecido)] = {8, 5};
    p[int(C::Cidade)] = {10, 5};
    p[int(C::Dia)] = {10, 30};
    p[int(C::Mes)] = {10, 40};
    p[int(C::Ano)] = {10, 60};
    p[int(C::Banco)] = {1, 2};
    p[int(C::NumeroCheque)] = {3, 2};
    return p;
}

QString mensagem(const QString &campo, int tamanho, const QString &frase, int limite) {
    return "Há problemas no posicionamento do campo " + campo + ". O campo " + campo +
           " não está respeitando o tamanho de " + QString::number(tamanho) + " posições " + frase +
           " ou não está respeitando o limite de " + QString::number(limite) +
           " posições em relação a última coluna do cheque ( coluna 80). Por favor verifique.";
}

// A placement of some fields over the valid one. When Passa, it just passes, and the blamed
// field one column closer to the field before it fails with the message; else it fails as it
// stands.
struct CasoPosicao {
    const char *Nome;
    QList<std::pair<C, PosicaoCopia>> Mudancas;
    C Culpado;
    QString Mensagem;
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
    EXPECT_EQ(falha->Texto, caso.Mensagem);
}

// Same-line pairs on line 5, the field further left placed so that the other one ends at
// column 80 where it fits.
INSTANTIATE_TEST_SUITE_P(
    Casos, PosicaoCopiaRegras,
    ::testing::Values(
        CasoPosicao{"ValorBanco",
                    {{C::Valor, {5, 25}}, {C::Banco, {5, 44}}},
                    C::Banco,
                    mensagem("Banco", 19, "do valor", 36)},
        CasoPosicao{"BancoValor",
                    {{C::Banco, {5, 25}}, {C::Valor, {5, 62}}},
                    C::Valor,
                    mensagem("Valor", 37, "do banco", 18)},
        CasoPosicao{"ValorFavorecido",
                    {{C::Valor, {5, 14}}, {C::Favorecido, {5, 33}}},
                    C::Favorecido,
                    mensagem("Favorecido", 19, "do valor", 47)},
        CasoPosicao{"FavorecidoValor",
                    {{C::Favorecido, {5, 14}}, {C::Valor, {5, 62}}},
                    C::Valor,
                    mensagem("Valor", 48, "do favorecido", 18)},
        CasoPosicao{"ValorCidade",
                    {{C::Valor, {5, 41}}, {C::Cidade, {5, 60}}},
                    C::Cidade,
                    mensagem("Cidade", 19, "do valor", 20)},
        CasoPosicao{"CidadeValor",
                    {{C::Cidade, {5, 1}}, {C::Valor, {5, 22}}},
                    C::Valor,
                    mensagem("Valor", 21, "da cidade", 18)},
        CasoPosicao{"ValorNumero",
                    {{C::Valor, {5, 47}}, {C::NumeroCheque, {5, 66}}},
                    C::NumeroCheque,
                    mensagem("Nº do Cheque", 19, "do valor", 14)},
        CasoPosicao{"NumeroValor",
                    {{C::NumeroCheque, {5, 47}}, {C::Valor, {5, 62}}},
                    C::Valor,
                    mensagem("Valor", 15, "do Nº do cheque", 18)},
        // Bank and payee together are wider than the sheet: on one line they always fail.
        CasoPosicao{"BancoFavorecido",
                    {{C::Banco, {5, 1}}, {C::Favorecido, {5, 38}}},
                    C::Favorecido,
                    mensagem("Favorecido", 37, "do banco", 47),
                    false},
        CasoPosicao{"FavorecidoBanco",
                    {{C::Favorecido, {5, 1}}, {C::Banco, {5, 49}}},
                    C::Banco,
                    mensagem("Banco", 48, "do favorecido", 36),
                    false},
        CasoPosicao{"BancoCidade",
                    {{C::Banco, {5, 23}}, {C::Cidade, {5, 60}}},
                    C::Cidade,
                    mensagem("Cidade", 37, "do banco", 20)},
        CasoPosicao{"CidadeBanco",
                    {{C::Cidade, {5, 1}}, {C::Banco, {5, 22}}},
                    C::Banco,
                    mensagem("Banco", 21, "da cidade", 36)},
        CasoPosicao{"BancoNumero",
                    {{C::Banco, {5, 29}}, {C::NumeroCheque, {5, 66}}},
                    C::NumeroCheque,
                    mensagem("Nº do Cheque", 37, "do banco", 14)},
        CasoPosicao{"NumeroBanco",
                    {{C::NumeroCheque, {5, 29}}, {C::Banco, {5, 44}}},
                    C::Banco,
                    mensagem("Banco", 15, "do nº do cheque", 36)},
        CasoPosicao{"FavorecidoCidade",
                    {{C::Favorecido, {5, 12}}, {C::Cidade, {5, 60}}},
                    C::Cidade,
                    mensagem("Cidade", 48, "do favorecido", 20)},
        CasoPosicao{"CidadeFavorecido",
                    {{C::Cidade, {5, 1}}, {C::Favorecido, {5, 22}}},
                    C::Favorecido,
                    mensagem("Favorecido", 21, "da cidade", 47)},
        CasoPosicao{"FavorecidoNumero",
                    {{C::Favorecido, {5, 18}}, {C::NumeroCheque, {5, 66}}},
                    C::NumeroCheque,
                    mensagem("Nº do Cheque", 48, "do favorecido", 14)},
        CasoPosicao{"NumeroFavorecido",
                    {{C::NumeroCheque, {5, 18}}, {C::Favorecido, {5, 33}}},
                    C::Favorecido,
                    mensagem("Favorecido", 15, "do Nº do Cheque", 47)},
        CasoPosicao{"CidadeNumero",
                    {{C::Cidade, {5, 1}}, {C::NumeroCheque, {5, 22}}},
                    C::NumeroCheque,
                    mensagem("Nº do Cheque", 21, "da cidade", 14)},
        CasoPosicao{"NumeroCidade",
                    {{C::NumeroCheque, {5, 45}}, {C::Cidade, {5, 60}}},
                    C::Cidade,
                    mensagem("Cidade", 15, "do nº do cheque", 20)},
        // The date rows hold on any line; the numbers of rows 12 and 13 are the message's own.
        CasoPosicao{
            "DiaCidade",
            {{C::Dia, {10, 57}}, {C::Cidade, {10, 60}}, {C::Mes, {10, 60}}, {C::Ano, {10, 70}}},
            C::Cidade,
            mensagem("Cidade", 3, "do dia", 20)},
        CasoPosicao{
            "CidadeDia",
            {{C::Cidade, {10, 57}}, {C::Dia, {10, 78}}, {C::Mes, {10, 60}}, {C::Ano, {10, 70}}},
            C::Dia,
            mensagem("Dia", 21, "da cidade", 2)},
        CasoPosicao{"DiaMes",
                    {{C::Dia, {10, 30}}, {C::Mes, {10, 33}}},
                    C::Mes,
                    mensagem("Mês", 3, "do dia", 9)},
        CasoPosicao{"MesDia",
                    {{C::Mes, {10, 30}}, {C::Dia, {10, 40}}},
                    C::Dia,
                    mensagem("Dia", 3, "do mês", 2)},
        CasoPosicao{"MesAno",
                    {{C::Mes, {16, 66}}, {C::Ano, {12, 76}}},
                    C::Ano,
                    mensagem("Ano", 10, "do mês", 9)},
        CasoPosicao{"AnoMes",
                    {{C::Ano, {10, 35}}, {C::Mes, {10, 40}}},
                    C::Mes,
                    mensagem("Mês", 3, "do ano", 9)},
        // On the same column the first field of the row counts as the one further left.
        CasoPosicao{"MesmaColuna",
                    {{C::Favorecido, {2, 60}}},
                    C::Favorecido,
                    mensagem("Favorecido", 19, "do valor", 47),
                    false},
        // Rows 1 and 2 both fail, and so does the date: the first row in order is told.
        CasoPosicao{"PrimeiraFalhaVence",
                    {{C::Valor, {5, 25}},
                     {C::Banco, {5, 43}},
                     {C::Favorecido, {5, 30}},
                     {C::Mes, {10, 31}}},
                    C::Banco,
                    mensagem("Banco", 19, "do valor", 36),
                    false}),
    [](const auto &info) { return std::string(info.param.Nome); });

} // namespace
