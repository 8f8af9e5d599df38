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
// 85 characters: the first line breaks at the last blank inside 81.
const QString ExtensoLongo = "Nove Milhões, Novecentos e Noventa e Nove Mil, Novecentos e "
                             "Noventa e Nove Reais e Noventa e Nove Centavos";

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
        // over two lines; a day placed past column 80 is not carried; an item behind a line
        // already full is put right after it.
        CasoPagina{"transborda.txt",
                   [](LayoutCopia &l, ChequeCopia &c, QString &e) {
                       e = ExtensoLongo;
                       c.Valor = "9.999.999,99";
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

// Every field apart on its own line; the date on the city's line in order.
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

struct CasoPosicao {
    const char *Nome;
    QList<std::pair<C, PosicaoCopia>> Mudancas;
    std::optional<C> Culpado;
    QString Mensagem;
};

class PosicaoCopiaRegras : public ::testing::TestWithParam<CasoPosicao> {};

TEST_P(PosicaoCopiaRegras, BlamesTheFirstPairOutOfOrder) {
    QList<PosicaoCopia> p = posicoes_validas();
    for (const auto &[campo, pos] : GetParam().Mudancas)
        p[int(campo)] = pos;
    const auto falha = VerificaPosicaoCopia(p);
    ASSERT_EQ(falha.has_value(), GetParam().Culpado.has_value());
    if (!falha) return;
    EXPECT_EQ(falha->Culpado, *GetParam().Culpado);
    EXPECT_EQ(falha->Texto, GetParam().Mensagem);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, PosicaoCopiaRegras,
    ::testing::Values(
        CasoPosicao{"Validas", {}, std::nullopt, {}},
        // Bank at 10 takes 36 columns: the amount must start after 46.
        CasoPosicao{"ValorColadoNoBanco",
                    {{C::Banco, {2, 10}}, {C::Valor, {2, 46}}},
                    C::Valor,
                    mensagem("Valor", 37, "do banco", 18)},
        CasoPosicao{"ValorLogoDepoisDoBanco", {{C::Banco, {2, 10}}, {C::Valor, {2, 47}}}},
        // The amount ends at 80 exactly, and one column further it passes the sheet.
        CasoPosicao{"ValorAteColuna80", {{C::Banco, {2, 10}}, {C::Valor, {2, 62}}}},
        CasoPosicao{"ValorAlemDaColuna80",
                    {{C::Banco, {2, 10}}, {C::Valor, {2, 63}}},
                    C::Valor,
                    mensagem("Valor", 37, "do banco", 18)},
        // On the same column the first of the pair is the one further left.
        CasoPosicao{"MesmaColuna",
                    {{C::Favorecido, {2, 60}}},
                    C::Favorecido,
                    mensagem("Favorecido", 19, "do valor", 47)},
        CasoPosicao{"LinhasDiferentesNaoSeComparam",
                    {{C::Favorecido, {9, 2}}, {C::NumeroCheque, {3, 10}}}},
        CasoPosicao{"NumeroAntesDoFavorecido",
                    {{C::Favorecido, {3, 16}}},
                    C::Favorecido,
                    mensagem("Favorecido", 15, "do Nº do Cheque", 47)},
        CasoPosicao{"NumeroColadoNaCidade",
                    {{C::NumeroCheque, {10, 20}}, {C::Dia, {10, 50}}},
                    C::NumeroCheque,
                    mensagem("Nº do Cheque", 21, "da cidade", 14)},
        // The date rows hold on any line, with the numbers of their own table.
        CasoPosicao{
            "DiaDentroDaCidade", {{C::Dia, {10, 25}}}, C::Dia, mensagem("Dia", 21, "da cidade", 2)},
        CasoPosicao{"DiaNaColuna26", {{C::Dia, {10, 26}}}},
        CasoPosicao{"DiaAntesDaCidade",
                    {{C::Cidade, {10, 20}}, {C::Dia, {10, 19}}},
                    C::Cidade,
                    mensagem("Cidade", 3, "do dia", 20)},
        CasoPosicao{
            "MesColadoNoDia", {{C::Mes, {10, 32}}}, C::Mes, mensagem("Mês", 3, "do dia", 9)},
        CasoPosicao{
            "AnoColadoNoMes", {{C::Ano, {10, 49}}}, C::Ano, mensagem("Ano", 10, "do mês", 9)},
        CasoPosicao{"AnoAntesDoMes",
                    {{C::Ano, {10, 35}}, {C::Mes, {10, 38}}},
                    C::Mes,
                    mensagem("Mês", 3, "do ano", 9)},
        CasoPosicao{
            "AnoAlemDaColuna80", {{C::Ano, {10, 77}}}, C::Ano, mensagem("Ano", 10, "do mês", 9)}),
    [](const auto &info) { return std::string(info.param.Nome); });

} // namespace
