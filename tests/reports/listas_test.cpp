#include "apoio/referencia.h"
#include "core/desktop_roteiro.h"
#include "printer/simulador.h"
#include "reports/listas.h"
#include "reports/relato.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;
using vexa::teste::confere_referencia;

namespace {

// Rows as the report's list shows them: every fourth cheque cancelled, amounts that grow.
QStringList linhas(int n) {
    QStringList r;
    for (int i = 1; i <= n; ++i) {
        QMap<QString, QString> c{
            {"StCancel", i % 4 == 0 ? "C" : " "},
            {"NRCH", i % 5 == 0 ? "" : QString::number(100000 + i)},
            {"Banco", i % 2 ? "001" : "237"},
            {"V_CH", QString::number(i * 111) + "," + QString::number(i % 10)},
            {"Data", QStringLiteral("%1/02/99").arg(i % 28 + 1, 2, 10, QChar('0'))},
            {"Favor", "Favorecido número " + QString::number(i)},
            {"Index", QStringLiteral("%1").arg(i, 10, 10, QChar('0'))}};
        r << LinhaRelatorio(c);
    }
    return r;
}

struct Caso {
    const char *nome;
    FormatoLista formato;
    DestinoLista destino;
    int linhas;
    int envios;
};
class ListaDeCheques : public ::testing::TestWithParam<Caso> {};

// The system printer takes three cheques a page here, so that its pages stay short.
constexpr int PorPaginaWin = 3;

TEST_P(ListaDeCheques, PaginasInteiras) {
    const Caso &c = GetParam();
    const QStringList envios =
        envios_lista(linhas(c.linhas), c.formato, c.destino, "230299", PorPaginaWin);
    EXPECT_EQ(envios.size(), c.envios);
    QString texto;
    for (int i = 0; i < envios.size(); ++i)
        texto += "=== envio " + QString::number(i + 1) + " ===\n" + envios[i];
    // The cheque printer's lists end their lines with LF, the file's with CR LF: the same text.
    if (c.destino == DestinoLista::Arquivo) {
        const QStringList vexa =
            envios_lista(linhas(c.linhas), c.formato, DestinoLista::Vexa, "230299", PorPaginaWin);
        ASSERT_EQ(vexa.size(), envios.size());
        for (int i = 0; i < envios.size(); ++i)
            EXPECT_EQ(QString(vexa[i]).replace("\n", "\r\n"), envios[i]);
        return;
    }
    confere_referencia(texto, QStringLiteral("cheques_impressos/%1.txt").arg(c.nome));
}

INSTANTIATE_TEST_SUITE_P(
    Relatorio, ListaDeCheques,
    ::testing::Values(Caso{"normal_1", FormatoLista::Normal, DestinoLista::Vexa, 1, 1},
                      Caso{"normal_13", FormatoLista::Normal, DestinoLista::Vexa, 13, 2},
                      Caso{"normal_14", FormatoLista::Normal, DestinoLista::Vexa, 14, 2},
                      Caso{"normal_arquivo", FormatoLista::Normal, DestinoLista::Arquivo, 14, 2},
                      Caso{"normal_win_1", FormatoLista::Normal, DestinoLista::Windows, 1, 1},
                      Caso{"normal_win_3", FormatoLista::Normal, DestinoLista::Windows, 3, 2},
                      Caso{"normal_win_4", FormatoLista::Normal, DestinoLista::Windows, 4, 2},
                      Caso{"compacto_1", FormatoLista::Compacto, DestinoLista::Vexa, 1, 1},
                      Caso{"compacto_36", FormatoLista::Compacto, DestinoLista::Vexa, 36, 2},
                      Caso{"compacto_38", FormatoLista::Compacto, DestinoLista::Vexa, 38, 2},
                      Caso{"compacto_arquivo", FormatoLista::Compacto, DestinoLista::Arquivo, 38,
                           2},
                      Caso{"compacto_win_1", FormatoLista::Compacto, DestinoLista::Windows, 1, 1},
                      Caso{"compacto_win_6", FormatoLista::Compacto, DestinoLista::Windows, 6, 2},
                      Caso{"compacto_win_7", FormatoLista::Compacto, DestinoLista::Windows, 7, 2}),
    [](const auto &info) { return std::string(info.param.nome); });

class EnvioDaLista : public ::testing::Test {
  protected:
    void SetUp() override {
        s.Hoje6 = "230299";
        s.PortaImpressora = "COM2";
        s.Impressora = std::make_unique<Simulador>(s.CaminhoApp);
        imp().LimpaChamadas();
    }
    Simulador &imp() { return static_cast<Simulador &>(*s.Impressora); }
    int folhas() { return int(QDir(imp().PastaPapel()).entryList({"*.txt"}, QDir::Files).size()); }
    QTemporaryDir pasta;
    Sessao s{pasta.path()};
    DesktopRoteiro d;
};

TEST_F(EnvioDaLista, ImpressoraPedeCadaDocumentoECancelarPara) {
    d.Respostas = {Resposta::OK, Resposta::OK, Resposta::OK};
    int lidas = 0;
    envia_lista(s, d, linhas(27), FormatoLista::Normal, DestinoLista::Vexa,
                [&](int i) { return lidas = i + 1, true; });
    EXPECT_EQ(lidas, 27);
    EXPECT_EQ(d.Textos(), (QStringList{"Insira o Documento.", "Insira novo Documento...",
                                       "Insira novo Documento..."}));
    EXPECT_EQ(d.Mensagens[0].Titulo, "Impressão do Cheque");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Impressão de Relatório");
    EXPECT_EQ(folhas(), 3);

    // Cancel at the second document leaves the first page printed, and nothing more.
    d.Mensagens.clear();
    d.Respostas = {Resposta::OK, Resposta::Cancel};
    envia_lista(s, d, linhas(27), FormatoLista::Normal, DestinoLista::Vexa);
    EXPECT_EQ(folhas(), 4);
    d.Respostas = {Resposta::Cancel};
    envia_lista(s, d, linhas(27), FormatoLista::Normal, DestinoLista::Vexa);
    EXPECT_EQ(folhas(), 4);
}

TEST_F(EnvioDaLista, ArquivoGravaTudoEImpressoraDoSistemaEmPaginas) {
    d.CaminhoSalvar = pasta.path() + "/lista";
    envia_lista(s, d, linhas(14), FormatoLista::Normal, DestinoLista::Arquivo);
    QFile f(pasta.path() + "/lista.txt");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll().mid(3)),
              envios_lista(linhas(14), FormatoLista::Normal, DestinoLista::Arquivo, "230299", 55)
                  .join(QString()));
    EXPECT_TRUE(d.Mensagens.isEmpty());

    s.ChequesPorPagina = 2;
    envia_lista(s, d, linhas(5), FormatoLista::Compacto, DestinoLista::Windows);
    ASSERT_EQ(d.Impressos.size(), 1);
    EXPECT_EQ(d.Impressos[0].Paginas.size(), 2);
    EXPECT_EQ(d.Impressos[0].TamanhoFonte, 9);

    d.ErroImpressao = 482;
    envia_lista(s, d, linhas(5), FormatoLista::Normal, DestinoLista::Windows);
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Ocorreu erro 482! Possiveis Causas:"));
}

} // namespace
