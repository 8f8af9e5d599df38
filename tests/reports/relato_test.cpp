#include "catalogo/telas.h"
#include "cheque/main.h"
#include "registers/registros_apoio.h"
#include "reports/excluirel.h"
#include "reports/filtro.h"
#include "reports/geral.h"
#include "reports/listas.h"
#include "reports/planilha.h"
#include "reports/relato.h"
#include "store/consulta_log.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QSqlQuery>
#include <QStandardPaths>
#include <functional>

using namespace vexa;
using vexa::teste::confere_referencia;

namespace {

const QStringList tres = {"0000000001", "0000000002", "0000000003"};

struct Cheque {
    QString Index, Banco, V_CH, Favor, Local, Data, NRCH, StCancel;
    QStringList Comentarios = {"", "", ""};
};

class TelaRelato : public vexa::teste::Registros {
  protected:
    void grava(const QList<Cheque> &cheques) {
        ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
        RecordSet &rs = Conjunto(s, TabLog);
        for (const Cheque &c : cheques) {
            rs.AddNew();
            rs.Define("Index", c.Index);
            rs.Define("Codigo", c.Index.right(5));
            rs.Define("Banco", c.Banco);
            rs.Define("V_CH", c.V_CH);
            rs.Define("Favor", c.Favor);
            rs.Define("Local", c.Local);
            rs.Define("Data", c.Data);
            rs.Define("NRCH", c.NRCH);
            rs.Define("StCancel", c.StCancel.isEmpty() ? " " : c.StCancel);
            rs.Define("Comentario", c.Comentarios[0]);
            rs.Define("Comentario1", c.Comentarios[1]);
            rs.Define("Comentario2", c.Comentarios[2]);
            ASSERT_TRUE(rs.Update());
        }
        FechaTabelas(s, 0, 0, 0, 1);
    }
    void grava_exemplo() {
        grava({{"0000000001",
                "001",
                "1234,5",
                "Maria D'Ávila",
                "São Paulo",
                "05/02/99",
                "000123",
                "",
                {"Aluguel de fevereiro", "", "sala 5"}},
               {"0000000002", "237", "100,", "João da Silva", "Campinas", "10/02/99", "", "C"},
               {"0000000003",
                "341",
                "99,99",
                "Posto 50% Ltda",
                "Santos",
                "20/03/99",
                "77",
                "",
                {"", "ref_1 *urgente*", ""}}});
    }
    Relato &relato() { return abre<Relato>(); }
    QStringList indices(Relato &r) {
        QStringList i;
        for (const QString &l : r.List1.Itens.lista())
            i << l.right(10).trimmed();
        return i;
    }
};

// --- the row of the list

struct Linha {
    const char *caso;
    QMap<QString, QString> registro;
    QString esperada;
};
class LinhaDoRelatorio : public ::testing::TestWithParam<Linha> {};

// The positions of the column bars: the heading's must be the row's.
QList<int> barras(const QString &linha) {
    QList<int> b;
    for (int i = 0; i < linha.size(); ++i)
        if (linha[i] == '|') b << i;
    return b;
}

TEST_P(LinhaDoRelatorio, ColunasFixasSobOCabecalho) {
    EXPECT_EQ(LinhaRelatorio(GetParam().registro), GetParam().esperada);
    EXPECT_EQ(CabecalhoRelatorio().size(), GetParam().esperada.size());
    EXPECT_EQ(barras(CabecalhoRelatorio()), barras(GetParam().esperada.left(54)));
}

const QString B74 = QString(74, ' ');
INSTANTIATE_TEST_SUITE_P(
    Relatorio, LinhaDoRelatorio,
    ::testing::Values(Linha{"vazia",
                            {{"Banco", "001"}},
                            "  |" + QString(12, ' ') + " | 001 | " + QString(16, ' ') + " | " +
                                QString(8, ' ') + " | " + B74 + QString(10, ' ')},
                      Linha{"completa",
                            {{"StCancel", " "},
                             {"NRCH", "123"},
                             {"Banco", "237"},
                             {"V_CH", "1234,5"},
                             {"Data", "05/02/99"},
                             {"Favor", "Maria"},
                             {"Index", "0000000007"}},
                            "  |         123 | 237 |         1.234,50 | 05/02/99 | Maria" +
                                QString(69, ' ') + "0000000007"},
                      Linha{"cancelada e valor inteiro",
                            {{"StCancel", "C"}, {"Banco", "001"}, {"V_CH", "100,"}, {"Index", "1"}},
                            "C |" + QString(12, ' ') + " | 001 |           100,00 | " +
                                QString(8, ' ') + " | " + B74 + "         1"},
                      Linha{"maior valor e favorecido cortado",
                            {{"Banco", "001"},
                             {"V_CH", "9999999999,99"},
                             {"Favor", QString(70, 'x') + "ABCDEFGH"},
                             {"Index", "0000000001"}},
                            "  |" + QString(12, ' ') + " | 001 | 9.999.999.999,99 | " +
                                QString(8, ' ') + " | " + QString(70, 'x') + "ABCD" +
                                "0000000001"}),
    [](const auto &info) {
        QString n = info.param.caso;
        n.replace(' ', '_');
        return n.toStdString();
    });

// --- the screen

TEST_F(TelaRelato, ListaMostraTodosETotalDeixaOsCancelados) {
    grava_exemplo();
    Relato &r = relato();
    EXPECT_EQ(indices(r), (QStringList{"0000000001", "0000000002", "0000000003"}));
    EXPECT_TRUE(r.List1.Itens[1].startsWith("C |"));
    EXPECT_EQ(r.Text1[5].Caption, "1.334,49");
    EXPECT_TRUE(d.Mensagens.isEmpty());
}

TEST_F(TelaRelato, ListaVaziaTotalZero) {
    Relato &r = relato();
    EXPECT_EQ(r.List1.ListCount(), 0);
    EXPECT_EQ(r.Text1[5].Caption, "0,00");
    r.Clica("SSCommand1");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto,
              "Não é possivel enviar relatório!\rNenhum registro encontrado!");
    EXPECT_EQ(d.Mensagens[0].Titulo, "    Relatório sem registros");
}

TEST_F(TelaRelato, SemBaseDeDados) {
    QFile::remove(s.CaminhoApp + "/VEXA.db");
    Relato &r = relato();
    EXPECT_EQ(d.Textos(),
              QStringList{"O Banco de dados \"" + s.CaminhoApp + "/VEXA.db\" nao foi encontrado!"});
    EXPECT_EQ(r.List1.ListCount(), 0);
}

TEST_F(TelaRelato, CliqueMostraOChequeEReduzOConjuntoAEle) {
    grava_exemplo();
    Relato &r = relato();
    r.List1.ListIndex = 0;
    r.List1_Click();
    EXPECT_EQ(r.Text1[0].Caption, "001 - " + NomeBanco(s, "001"));
    EXPECT_EQ(r.Text1[1].Caption, "1.234,50");
    EXPECT_EQ(r.Text1[2].Caption, "Maria D'Ávila");
    EXPECT_EQ(r.Text1[3].Caption, "São Paulo");
    EXPECT_EQ(r.Text1[4].Caption, "05/02/99");
    EXPECT_EQ(r.Text1[6].Caption, "000123");
    EXPECT_EQ(r.Text1[7].Caption, " ");
    EXPECT_EQ(r.Text1[8].Caption, "Aluguel de fevereiro");
    EXPECT_EQ(r.Text1[10].Caption, "sala 5");
    EXPECT_EQ(Conjunto(s, TabLog).RecordCount(), 1);
    EXPECT_EQ(r.List1.ListCount(), 3); // the list keeps every row

    // The general report then holds that cheque alone; the complete list brings all back.
    d.CaminhoSalvar = pasta.path() + "/um";
    r.Clica("criar");
    EXPECT_EQ(d.Textos().last(),
              "O Relatório Foi Criado Com Sucesso, Poderá Abri-lo no Word ou Excel");
    QFile f(pasta.path() + "/um.txt");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(f.readAll()).count("CH. Nº:"), 1);
    r.Clica("SSCommand5");
    EXPECT_EQ(Conjunto(s, TabLog).RecordCount(), 3);
    EXPECT_TRUE(r.Text1[0].Caption.isEmpty());
}

TEST_F(TelaRelato, RelatorioGeralInteiro) {
    grava_exemplo();
    grava({{"0000000004", "999", "5,", "Banco sumido", "", "01/04/99", "", ""}});
    Relato &r = relato();
    confere_referencia(texto_relatorio_geral(s), "relatorios/geral.txt");
    d.CaminhoSalvar = pasta.path() + "/geral.txt";
    r.Clica("criar");
    QFile f(d.CaminhoSalvar);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray bytes = f.readAll();
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF"));
    EXPECT_EQ(QString::fromUtf8(bytes.mid(3)), texto_relatorio_geral(s));
}

TEST_F(TelaRelato, RelatorioGeralQueNaoPodeSerGravadoAvisa) {
    grava_exemplo();
    Relato &r = relato();
    d.CaminhoSalvar = pasta.path() + "/nao/existe.txt";
    r.Clica("criar");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith("Não foi possível gravar o arquivo"));
    d.CaminhoSalvar.clear(); // Cancel in the dialog writes nothing and says nothing
    r.Clica("criar");
    EXPECT_EQ(d.Mensagens.size(), 1);
}

TEST_F(TelaRelato, ExcluirSoOChequeQueAListaMostraEPerguntaPorEle) {
    grava_exemplo();
    Relato &r = relato();
    r.List1.ListIndex = 0; // 000123 of bank 001
    r.List1_Click();
    // A filter that hides the cheque takes it off the details: Enter on "Excluir Cheque"
    // deletes nothing.
    MontaFiltroLog(s, d, "341", "", "", "", "", "", "", "");
    EXPECT_TRUE(r.Text1[0].Caption.isEmpty());
    EXPECT_TRUE(r.Text1[6].Caption.isEmpty());
    r.Clica("Elimina");
    EXPECT_TRUE(d.Mensagens.isEmpty());

    // The cheque the list shows: the question names it, and Enter answers No.
    r.List1.ListIndex = 0;
    r.List1_Click();
    r.Clica("Elimina");
    EXPECT_EQ(indices(r), QStringList{"0000000003"});
    d.Respostas = {Resposta::Yes};
    r.Clica("Elimina");
    ASSERT_EQ(d.Mensagens.size(), 2);
    EXPECT_EQ(d.Mensagens[1].Texto, "Este Cheque Será Eliminado Da Base de Dados de seu "
                                    "computador!\n\nBanco: 341 - " +
                                        NomeBanco(s, "341") +
                                        "\nNúmero: 77\nValor: 99,99\nFavorecido: Posto 50% "
                                        "Ltda\nData: 20/03/99\n\nTem Certeza que deseja "
                                        "Eliminá-lo?");
    EXPECT_EQ(d.Mensagens[1].Titulo, "Atenção");
    EXPECT_EQ(d.Mensagens[1].Botoes_, Botoes::YesNo);
    EXPECT_EQ(d.Mensagens[1].Padrao, Resposta::No);
    EXPECT_EQ(indices(r), (QStringList{"0000000001", "0000000002"}));
    EXPECT_TRUE(r.Text1[0].Caption.isEmpty());
}

// --- a register locked by another program after it was opened

struct Travado {
    const char *caso;
    std::function<void(Relato &)> acao;
    int mensagens; // the last of them says the register could not be read
};
class RegistroTravado : public TelaRelato, public ::testing::WithParamInterface<Travado> {
  protected:
    void TearDown() override {
        QSqlDatabase::database(Trava, false).close();
        QSqlDatabase::removeDatabase(Trava);
        TelaRelato::TearDown();
    }
    static inline const QString Trava = QStringLiteral("trava-relato");
};

TEST_P(RegistroTravado, DizQueNaoPodeLerEmVezDeMostrarVazio) {
    grava_exemplo();
    Relato &r = relato();
    r.List1.ListIndex = 0;
    r.List1_Click();
    r.List1.SetSelected(0, true);
    QSqlDatabase outra = QSqlDatabase::addDatabase("QSQLITE", Trava);
    outra.setDatabaseName(s.CaminhoApp + "/" + s.NomeMDB);
    ASSERT_TRUE(outra.open());
    ASSERT_TRUE(QSqlQuery(outra).exec("BEGIN EXCLUSIVE"));
    ASSERT_TRUE(QSqlQuery(s.Banco->db()).exec("PRAGMA busy_timeout = 0"));
    d.Respostas = {Resposta::Yes, Resposta::Yes};
    d.CaminhoSalvar = pasta.path() + "/geral.txt";
    GetParam().acao(r);
    ASSERT_EQ(d.Mensagens.size(), GetParam().mensagens) << d.Textos().join('|').toStdString();
    EXPECT_EQ(d.Mensagens.last().Texto,
              "Não foi possível ler o registro de cheques: o banco de dados \"" + s.CaminhoApp +
                  "/VEXA.db\" está bloqueado por outro programa.\nFeche o outro programa e "
                  "tente de novo.");
    EXPECT_FALSE(QFile::exists(d.CaminhoSalvar));
    EXPECT_NE(r.Text1[5].Caption, "0,00");
}

INSTANTIATE_TEST_SUITE_P(
    Relatorio, RegistroTravado,
    ::testing::Values(Travado{"abrir_e_enviar",
                              [](Relato &r) {
                                  r.Unload();
                                  Desktop &d = r.desktop;
                                  d.Abre(std::make_unique<Relato>(r.sessao, d));
                                  auto &n = *dynamic_cast<Relato *>(d.Aberta(telas::Relato));
                                  EXPECT_TRUE(n.Text1[5].Caption.isEmpty());
                                  n.Clica("SSCommand1");
                              },
                              2},
                      Travado{"lista_completa", [](Relato &r) { r.Clica("SSCommand5"); }, 1},
                      Travado{"criar_agora", [](Relato &r) { r.Clica("criar"); }, 1},
                      Travado{"excluir", [](Relato &r) { r.Clica("Elimina"); }, 2},
                      Travado{"reimprimir", [](Relato &r) { r.Clica("SSCommand3"); }, 1},
                      Travado{"filtro",
                              [](Relato &r) {
                                  r.Clica("SSCommand6");
                                  Tela &f = *r.desktop.Aberta(telas::Filtro);
                                  f.SetFocus("Text1", 0);
                                  f.Digita("Text1", 0, "1"); // the bank can't be looked up
                                  f.Clica("Command3D1", 0);
                                  EXPECT_FALSE(f.Descarregada());
                              },
                              2},
                      // The question, the write refused, and the list that can't be filled again.
                      Travado{"cancelar_cheque",
                              [](Relato &r) {
                                  r.Clica("SSCommand4");
                                  r.desktop.Aberta(telas::ExcluiRel)->Clica("BtnCmd", 0);
                              },
                              3}),
    [](const auto &info) { return std::string(info.param.caso); });

// --- filter criteria

struct Criterio {
    const char *caso;
    QStringList
        campos; // Banco, DataIni, DataFim, ValorIni, ValorFim, Favorecido, Cidade, Comentario
    QStringList achados;
};
class CriteriosDoFiltro : public TelaRelato, public ::testing::WithParamInterface<Criterio> {};

TEST_P(CriteriosDoFiltro, AchaSoOQueAtendeATodos) {
    grava_exemplo();
    const QStringList &c = GetParam().campos;
    ASSERT_EQ(c.size(), 8);
    MontaFiltroLog(s, d, c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
    QStringList achados;
    RecordSet &rs = Conjunto(s, TabLog);
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        achados << rs.Campo("Index").right(1);
    EXPECT_EQ(achados, GetParam().achados);
}

INSTANTIATE_TEST_SUITE_P(
    Filtro, CriteriosDoFiltro,
    ::testing::Values(
        Criterio{"nenhum", {"", "", "", "", "", "", "", ""}, {"1", "2", "3"}},
        Criterio{"banco", {"237", "", "", "", "", "", "", ""}, {"2"}},
        Criterio{"favorecido com aspa", {"", "", "", "", "", "Maria D'Ávila", "", ""}, {"1"}},
        Criterio{"favorecido e inteiro", {"", "", "", "", "", "Maria", "", ""}, {}},
        Criterio{"cidade", {"", "", "", "", "", "", "campinas", ""}, {"2"}},
        Criterio{"uma data", {"", "10/02/99", "", "", "", "", "", ""}, {"2"}},
        Criterio{"datas entre", {"", "01/02/99", "28/02/99", "", "", "", "", ""}, {"1", "2"}},
        Criterio{"so a ultima data", {"", "", "10/02/99", "", "", "", "", ""}, {"1", "2", "3"}},
        Criterio{"um valor", {"", "", "", "100,00", "", "", "", ""}, {"2"}},
        Criterio{"valores entre", {"", "", "", "99,99", "1.234,50", "", "", ""}, {"1", "2", "3"}},
        Criterio{"so o maior valor", {"", "", "", "", "100,00", "", "", ""}, {"1", "2", "3"}},
        Criterio{"comentario em qualquer linha", {"", "", "", "", "", "", "", "sala"}, {"1"}},
        Criterio{"comentario sem caixa", {"", "", "", "", "", "", "", "URGENTE"}, {"3"}},
        Criterio{"porcento e literal", {"", "", "", "", "", "Posto 50% Ltda", "", ""}, {"3"}},
        Criterio{"sublinhado e literal", {"", "", "", "", "", "", "", "f_1"}, {"3"}},
        Criterio{"sublinhado nao e coringa", {"", "", "", "", "", "", "", "ref11"}, {}},
        Criterio{"asterisco e literal", {"", "", "", "", "", "", "", "*urgente*"}, {"3"}},
        Criterio{"asterisco nao e coringa", {"", "", "", "", "", "", "", "A*o"}, {}},
        Criterio{
            "comentario nao salva outro criterio", {"237", "", "", "", "", "", "", "sala"}, {}},
        Criterio{"todos juntos",
                 {"001", "01/02/99", "05/02/99", "1.000,00", "2.000,00", "Maria D'Ávila",
                  "São Paulo", "fevereiro"},
                 {"1"}}),
    [](const auto &info) {
        QString n = info.param.caso;
        n.replace(' ', '_');
        return n.toStdString();
    });

// --- the filter screen

struct Saida {
    int campo;
    QString digitado, fica, mensagem;
};
class SaidaDoFiltro : public TelaRelato, public ::testing::WithParamInterface<Saida> {};

TEST_P(SaidaDoFiltro, NormalizaOuRecusa) {
    fixa_hoje(QDate(1999, 2, 14));
    s.DefineHoje();
    const Saida &c = GetParam();
    Filtro &f = abre<Filtro>();
    f.SetFocus("Text1", c.campo);
    f.Digita("Text1", c.campo, c.digitado);
    f.SetFocus("Text1", c.campo == 7 ? 6 : 7);
    EXPECT_EQ(f.Text1[c.campo].Text, c.fica);
    if (c.mensagem.isEmpty()) {
        EXPECT_TRUE(d.Mensagens.isEmpty()) << d.Textos().join('|').toStdString();
        EXPECT_FALSE(f.Foco() == (RefControle{"Text1", c.campo}));
    } else {
        ASSERT_EQ(d.Mensagens.size(), 1);
        EXPECT_EQ(d.Mensagens[0].Texto, c.mensagem);
        EXPECT_EQ(d.Mensagens[0].Titulo, "Erro");
        EXPECT_EQ(f.Foco(), (RefControle{"Text1", c.campo}));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Filtro, SaidaDoFiltro,
    ::testing::Values(Saida{0, "1", "001", ""}, Saida{0, "0", "", ""},
                      Saida{0, "998", "", "Banco Inválido..."}, Saida{1, "5", "05/02/99", ""},
                      Saida{2, "290299", "", "Data Inválida..."},
                      Saida{1, "0502", "", "Voce deve entrar com (ddmmaa) diamesano..."},
                      Saida{2, "1/1/26", "", "Voce deve entrar com (ddmmaa) diamesano..."},
                      Saida{2, "311299", "31/12/99", ""}, Saida{3, "1234,5", "1.234,50", ""},
                      Saida{4, "12x", "", "O valor especificado não é um valor válido!"},
                      Saida{5, "D'Ávila", "D'Ávila", ""}));

TEST_F(TelaRelato, FiltroEsvaziaAoEntrarECortaOTamanho) {
    Filtro &f = abre<Filtro>();
    f.Digita("Text1", 0, "0012");
    EXPECT_EQ(f.Text1[0].Text, "001");
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "Tamanho Máximo deste campo...");
    EXPECT_EQ(d.Mensagens[0].Icone_, Icone::Exclamacao);
    f.SetFocus("Text1", 1);
    f.Digita("Text1", 1, "05/02/99");
    f.SetFocus("Text1", 5);
    f.SetFocus("Text1", 1);
    EXPECT_TRUE(f.Text1[1].Text.isEmpty());
}

TEST_F(TelaRelato, FiltroEnterSegueACadeia) {
    Filtro &f = abre<Filtro>();
    for (int i = 0; i < 6; ++i) {
        f.SetFocus("Text1", i);
        f.Tecla(13);
        EXPECT_EQ(f.Foco(), (RefControle{"Text1", i + 1}));
    }
    f.SetFocus("Text1", 6);
    f.Tecla(13);
    EXPECT_EQ(f.Foco(), (RefControle{"Command3D1", 0}));
}

TEST_F(TelaRelato, FiltroOkAplicaECancelarNao) {
    grava_exemplo();
    Relato &r = relato();
    Filtro &f = abre<Filtro>();
    f.SetFocus("Text1", 6);
    f.Digita("Text1", 6, "Santos");
    f.Clica("Command3D1", 1);
    EXPECT_EQ(r.List1.ListCount(), 3);
    Filtro &g = abre<Filtro>();
    g.SetFocus("Text1", 6);
    g.Digita("Text1", 6, "Santos");
    g.Clica("Command3D1", 0);
    EXPECT_TRUE(g.Descarregada());
    EXPECT_EQ(indices(r), QStringList{"0000000003"});
    EXPECT_EQ(r.Text1[5].Caption, "99,99");
    // A filter that finds nothing empties the list and the total.
    MontaFiltroLog(s, d, "", "", "", "", "", "Ninguém", "", "");
    EXPECT_EQ(r.List1.ListCount(), 0);
    EXPECT_EQ(r.Text1[5].Caption, "0,00");
}

// --- re-printing

TEST_F(TelaRelato, ReimprimirDevolveOChequeAoMain) {
    grava_exemplo();
    // The start-up's purge keeps the cheques of 1999; the reprint is confirmed.
    d.Respostas = {Resposta::No, Resposta::Yes};
    Main &m = *static_cast<Main *>(d.Abre(std::make_unique<Main>(s, d, QString())));
    d.Mensagens.clear();
    m.CheckBox.Value = 1;
    Relato &r = relato();
    r.List1.ListIndex = 0;
    r.List1_Click();
    r.Clica("SSCommand3");
    EXPECT_TRUE(r.Descarregada());
    EXPECT_EQ(m.Text1[0].Text, "001");
    EXPECT_EQ(m.Label1[6].Caption, NomeBanco(s, "001"));
    EXPECT_EQ(m.Text1[1].Text, "1.234,50");
    EXPECT_EQ(m.Text1[2].Text, "Maria D'Ávila");
    EXPECT_EQ(m.Text1[3].Text, "São Paulo");
    EXPECT_EQ(m.Text1[4].Text, "05/02/99");
    EXPECT_EQ(m.Text1[6].Text, "000123");
    EXPECT_EQ(m.Text2[0].Text, "Aluguel de fevereiro");
    EXPECT_EQ(m.Text2[2].Text, "sala 5");
    EXPECT_EQ(m.CheckBox.Value, 0);
    EXPECT_EQ(m.Foco(), RefControle{"CheckBox"});
}

TEST_F(TelaRelato, ReimprimirCanceladoPerguntaEBancoSumidoRecusa) {
    grava_exemplo();
    grava({{"0000000004", "999", "5,", "X", "", "01/04/99", "", ""}});
    Relato &r = relato();
    r.List1.ListIndex = 1;
    r.List1_Click();
    r.Clica("SSCommand3"); // Enter: No
    EXPECT_FALSE(r.Descarregada());
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Texto, "O cheque atual possui status de cancelado!\nConfirma "
                                    "reimpressão?\n\nBanco: 237 - " +
                                        NomeBanco(s, "237") +
                                        "\nNúmero: \nValor: 100,00\nFavorecido: João da "
                                        "Silva\nData: 10/02/99");
    EXPECT_EQ(d.Mensagens[0].Botoes_, Botoes::YesNo);
    EXPECT_EQ(d.Mensagens[0].Padrao, Resposta::No);
    r.List1.ListIndex = 3;
    r.List1_Click();
    r.Clica("SSCommand3");
    EXPECT_FALSE(r.Descarregada());
    EXPECT_EQ(d.Mensagens.last().Texto, "Banco inexistente, não é possível re-imprimir!");
    EXPECT_EQ(d.Mensagens.last().Titulo, "Erro");
    EXPECT_EQ(d.Mensagens.last().Icone_, Icone::Exclamacao);
}

// --- sending the list from the screen

class EnvioPelaTela : public TelaRelato {
  protected:
    int folhas() { return int(QDir(imp().PastaPapel()).entryList({"*.txt"}, QDir::Files).size()); }
};

TEST_F(EnvioPelaTela, ImpressoraRecebeAsFolhasEAListaAcompanha) {
    grava_exemplo();
    Relato &r = relato();
    EXPECT_TRUE(r.SSCommand1.Enabled);
    r.List1.ListIndex = 1;
    r.List1.SetSelected(0, true);
    r.List1.SetSelected(1, true);
    d.Respostas = {Resposta::OK};
    r.Clica("SSCommand1");
    EXPECT_EQ(d.Textos(), QStringList{"Insira o Documento."});
    EXPECT_EQ(folhas(), 1);
    // The walk ends on the last row, chosen alone, and the rows chosen before stay as they
    // were left by it: the first was chosen before the walk and deselected along it.
    EXPECT_EQ(r.List1.ListIndex, 2);
    EXPECT_EQ(r.List1.Selecionadas, (std::set<int>{2}));
}

TEST_F(EnvioPelaTela, ArquivoGravaOsBytesDaListaComoMostrada) {
    grava_exemplo();
    Relato &r = relato();
    r.Clica("OpCmd01", 0); // Arquivo
    r.Clica("OpCmd01", 1); // Compacto
    d.CaminhoSalvar = pasta.path() + "/lista";
    r.Clica("SSCommand1");
    QFile f(pasta.path() + "/lista.txt");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QString esperado = envios_lista(r.List1.Itens.lista(), FormatoLista::Compacto,
                                          DestinoLista::Arquivo, s.Hoje6, s.ChequesPorPagina)
                                 .join(QString());
    EXPECT_EQ(f.readAll(), "\xEF\xBB\xBF" + esperado.toUtf8());
    EXPECT_TRUE(esperado.contains("C|"));
    EXPECT_TRUE(d.Mensagens.isEmpty());
    EXPECT_EQ(imp().Chamadas(), QStringList());
}

TEST_F(EnvioPelaTela, ImpressoraDoSistemaPaginaPelaConfiguracao) {
    grava_exemplo();
    s.ChequesPorPagina = 2;
    Relato &r = relato();
    r.Clica("OpCmd02", 0);
    r.Clica("SSCommand1");
    ASSERT_EQ(d.Impressos.size(), 1);
    EXPECT_EQ(d.Impressos[0].Paginas.size(), 2);
    EXPECT_EQ(imp().Chamadas(), QStringList());
}

// --- cancelling

class Cancelamento : public TelaRelato {
  protected:
    // The keys of the cheques marked cancelled in the register (the current set becomes the
    // whole register).
    QStringList cancelados() {
        QStringList c;
        EXPECT_NE(AbreTabelas(s, d, 0, 0, 0, 1), -2);
        RecordSet &rs = Conjunto(s, TabLog);
        for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
            if (rs.Campo("StCancel") == "C") c << rs.Campo("Index");
        c.sort();
        return c;
    }
    ExcluiRel &cancelamento(Relato &r) {
        r.Clica("SSCommand4");
        auto *e = dynamic_cast<ExcluiRel *>(d.Aberta(telas::ExcluiRel));
        EXPECT_NE(e, nullptr);
        return *e;
    }
    // Sets the options as the operator clicks them.
    static void escolhe(ExcluiRel &e, int cheques, bool impressora, bool banco) {
        e.Clica("RadioBox01", cheques);
        if ((e.CheckBox01[0].Value != 0) != impressora) e.Clica("CheckBox01", 0);
        if ((e.CheckBox01[1].Value != 0) != banco) e.Clica("CheckBox01", 1);
        ASSERT_EQ(e.RadioBox01[cheques].Value, 1);
    }
};

TEST_F(Cancelamento, OpcoesComecamNoChequeSelecionadoEImpressoraOSubstitui) {
    Relato &r = relato();
    ExcluiRel &e = cancelamento(r);
    EXPECT_EQ(e.RadioBox01[2].Value, 1);
    EXPECT_EQ(e.RadioBox01[0].Value + e.RadioBox01[1].Value, 0);
    EXPECT_EQ(e.CheckBox01[1].Value, 1);
    EXPECT_EQ(e.CheckBox01[0].Value, 0);

    e.Clica("CheckBox01", 0);
    EXPECT_EQ(e.RadioBox01[0].Value, 1);
    EXPECT_EQ(e.RadioBox01[2].Value, 0);
    EXPECT_EQ(e.CheckBox01[0].Value, 1);

    e.Clica("RadioBox01", 2);
    EXPECT_EQ(e.CheckBox01[0].Value, 0);
    EXPECT_EQ(e.RadioBox01[0].Value, 0);

    // With "Todos" the printer may be ticked and the choice stays.
    e.Clica("RadioBox01", 1);
    e.Clica("CheckBox01", 0);
    EXPECT_EQ(e.RadioBox01[1].Value, 1);
    EXPECT_EQ(e.CheckBox01[0].Value, 1);
    // The report stays usable while the options are open.
    EXPECT_FALSE(r.Descarregada());
}

struct Confirmacao {
    const char *caso;
    friend void PrintTo(const Confirmacao &c, std::ostream *os) { *os << c.caso; }
    int cheques; // 2 selected, 0 last, 1 all
    bool impressora, banco;
    QStringList chamadas;
    QStringList cancelados; // in the register afterwards (0000000002 was already)
    QStringList mostrados;  // the report's list afterwards
    int botao = 0;          // BtnCmd: 0 OK, 1 Cancelar
};
class ConfirmaCancelamento : public Cancelamento,
                             public ::testing::WithParamInterface<Confirmacao> {};

const QStringList porta_u = {"IniciaPorta(COM2)", "CancelaRel(u)", "FechaPorta()"};
const QStringList porta_todos = {"IniciaPorta(COM2)", "CancelaRel(*)", "FechaPorta()"};

TEST_P(ConfirmaCancelamento, MarcaChamaEReenche) {
    const Confirmacao &c = GetParam();
    grava_exemplo();
    Relato &r = relato();
    // Rows 1 and 3 chosen, the third current.
    r.List1.SetSelected(0, true);
    r.List1.SetSelected(2, true);
    r.List1.ListIndex = 2;
    r.List1_Click();
    imp().LimpaChamadas();
    ExcluiRel &e = cancelamento(r);
    escolhe(e, c.cheques, c.impressora, c.banco);
    d.Respostas = {Resposta::Yes};
    e.Clica("BtnCmd", c.botao);
    EXPECT_TRUE(e.Descarregada());
    EXPECT_EQ(d.Aberta(telas::ExcluiRel), nullptr);
    // At most the question, which names what goes and defaults to No.
    EXPECT_LE(d.Mensagens.size(), 1);
    for (const auto &m : d.Mensagens)
        EXPECT_EQ(m.Padrao, Resposta::No);
    EXPECT_EQ(imp().Chamadas(), c.chamadas);
    EXPECT_EQ(indices(r), c.mostrados);
    for (int i = 0; i < r.List1.ListCount(); ++i)
        EXPECT_EQ(r.List1.List(i).startsWith("C |"), c.cancelados.contains(indices(r)[i])) << i;
    EXPECT_EQ(cancelados(), c.cancelados);
}

INSTANTIATE_TEST_SUITE_P(
    Combinacoes, ConfirmaCancelamento,
    ::testing::Values(
        // "Cheque selecionado" marks every row chosen and ends with the complete list.
        Confirmacao{"selecionado_banco", 2, false, true, {}, tres, tres},
        Confirmacao{"selecionado_nada", 2, false, false, {}, {"0000000002"}, {"0000000003"}},
        // "Último enviado" and "Todos" leave the set on the cheque marked last.
        Confirmacao{
            "ultimo_banco", 0, false, true, {}, {"0000000002", "0000000003"}, {"0000000003"}},
        Confirmacao{"ultimo_impressora", 0, true, false, porta_u, {"0000000002"}, {"0000000003"}},
        Confirmacao{
            "ultimo_ambos", 0, true, true, porta_u, {"0000000002", "0000000003"}, {"0000000003"}},
        Confirmacao{"todos_banco", 1, false, true, {}, tres, {"0000000003"}},
        Confirmacao{
            "todos_impressora", 1, true, false, porta_todos, {"0000000002"}, {"0000000003"}},
        Confirmacao{"todos_ambos", 1, true, true, porta_todos, tres, {"0000000003"}},
        // Cancelar closes with nothing marked and the list as it was.
        Confirmacao{"cancelar", 1, true, true, {}, {"0000000002"}, tres, 1}),
    [](const auto &info) { return std::string(info.param.caso); });

TEST_F(Cancelamento, ImpressoraSoNaoMudaOConjuntoNemALista) {
    grava_exemplo();
    Relato &r = relato();
    ExcluiRel &e = cancelamento(r);
    escolhe(e, 1, true, false);
    d.Respostas = {Resposta::Yes};
    e.Clica("BtnCmd", 0);
    EXPECT_EQ(d.Textos(), QStringList{"Todo o relatório da impressora será cancelado.\n\n"
                                      "Confirma o cancelamento?"});
    EXPECT_EQ(indices(r), tres);
    EXPECT_EQ(r.Text1[5].Caption, "1.334,49");
}

TEST_F(Cancelamento, CanceladosSaemDosTotaisEFicamNaListaCompleta) {
    grava_exemplo();
    Relato &r = relato();
    r.List1.SetSelected(0, true);
    r.List1.ListIndex = 0;
    // Enter on the question (No) leaves the options open with nothing marked.
    ExcluiRel &e = cancelamento(r);
    e.Clica("BtnCmd", 0);
    EXPECT_FALSE(e.Descarregada());
    EXPECT_EQ(cancelados(), QStringList{"0000000002"});
    EXPECT_EQ(d.Textos(), QStringList{"Este cheque será marcado como cancelado no banco de "
                                      "dados:\n\nBanco: 001\nNúmero: 000123\nValor: "
                                      "1.234,50\nFavorecido: Maria D'Ávila\nData: "
                                      "05/02/99\n\nConfirma o cancelamento?"});
    d.Respostas = {Resposta::Yes};
    e.Clica("BtnCmd", 0);
    EXPECT_EQ(indices(r), tres);
    EXPECT_EQ(r.Text1[5].Caption, "99,99");
    EXPECT_EQ(r.Text1[0].Caption, "");
    // Marking an already cancelled cheque again changes nothing.
    r.List1.SetSelected(1, true);
    r.List1.ListIndex = 1;
    d.Respostas = {Resposta::Yes};
    cancelamento(r).Clica("BtnCmd", 0);
    EXPECT_EQ(cancelados(), (QStringList{"0000000001", "0000000002"}));
    EXPECT_EQ(r.Text1[5].Caption, "99,99");
}

TEST_F(Cancelamento, ChequeSelecionadoSemLinhaAtualSoRefaz) {
    grava_exemplo();
    Relato &r = relato();
    // A row chosen but none current: nothing is marked.
    r.List1.SetSelected(0, true);
    cancelamento(r).Clica("BtnCmd", 0);
    EXPECT_EQ(cancelados(), QStringList{"0000000002"});
    // A current row that is not chosen: nothing is marked either, the list is refilled.
    r.List1.ListIndex = 0;
    r.List1_Click();
    cancelamento(r).Clica("BtnCmd", 0);
    EXPECT_EQ(cancelados(), QStringList{"0000000002"});
    EXPECT_EQ(indices(r), tres);
    EXPECT_EQ(r.Text1[0].Caption, "");
}

TEST_F(Cancelamento, TodosSoAsLinhasDoFiltro) {
    grava_exemplo();
    Relato &r = relato();
    MontaFiltroLog(s, d, "", "", "", "", "", "", "Santos", "");
    ASSERT_EQ(indices(r), QStringList{"0000000003"});
    ExcluiRel &e = cancelamento(r);
    escolhe(e, 1, false, true);
    d.Respostas = {Resposta::Yes};
    e.Clica("BtnCmd", 0);
    EXPECT_EQ(cancelados(), (QStringList{"0000000002", "0000000003"}));
}

TEST_F(Cancelamento, ChequeQueSumiuAvisaEOsOutrosSeguem) {
    grava_exemplo();
    Relato &r = relato();
    for (int i = 0; i < 3; ++i)
        r.List1.SetSelected(i, true);
    r.List1.ListIndex = 0;
    // The first cheque leaves the register behind the list's back.
    ASSERT_EQ(ExisteCodigo(s, "0000000001", TabLog), 1);
    Conjunto(s, TabLog).MoveFirst();
    Conjunto(s, TabLog).Delete();
    d.Respostas = {Resposta::Yes};
    cancelamento(r).Clica("BtnCmd", 0);
    EXPECT_EQ(d.Textos().mid(1), QStringList{"Cheque nao registrado!"});
    EXPECT_TRUE(d.Textos()[0].startsWith("Os 3 cheques escolhidos serão marcados"));
    EXPECT_EQ(cancelados(), (QStringList{"0000000002", "0000000003"}));
    EXPECT_EQ(indices(r), (QStringList{"0000000002", "0000000003"}));
}

} // namespace

namespace {

// The register's table: each column sorts by its meaning, both ways.
struct Ordenacao {
    int coluna;
    bool crescente;
    QStringList ordem;
};
class OrdemDaLista : public TelaRelato, public ::testing::WithParamInterface<Ordenacao> {};

} // namespace

TEST_P(OrdemDaLista, ColunaOrdenaPeloSentido) {
    grava_exemplo();
    Relato &r = relato();
    // A click on a heading sorts up by its column; a second click turns the order round.
    if (GetParam().coluna < 0) r.Ordena(-1, GetParam().crescente);
    for (int i = GetParam().coluna < 0 ? 2 : GetParam().crescente ? 1 : 0; i < 2; ++i)
        r.Cabecalho_Click(GetParam().coluna);
    EXPECT_EQ(indices(r), GetParam().ordem);
    // The lists and the report follow the order on the screen.
    EXPECT_EQ(Conjunto(s, TabLog).Campo("Index"), GetParam().ordem.first());
}

INSTANTIATE_TEST_SUITE_P(
    Relatorio, OrdemDaLista,
    ::testing::Values(
        Ordenacao{ColunaLog::Valor, true, {"0000000003", "0000000002", "0000000001"}},
        Ordenacao{ColunaLog::DataLog, false, {"0000000003", "0000000002", "0000000001"}},
        Ordenacao{ColunaLog::Favorecido, true, {"0000000002", "0000000001", "0000000003"}},
        Ordenacao{ColunaLog::Numero, true, {"0000000002", "0000000003", "0000000001"}},
        Ordenacao{ColunaLog::Situacao, false, {"0000000002", "0000000003", "0000000001"}},
        Ordenacao{-1, false, {"0000000003", "0000000002", "0000000001"}}));

TEST_F(TelaRelato, FiltroMostraSinalContagemEOrdemFica) {
    grava_exemplo();
    Relato &r = relato();
    EXPECT_FALSE(r.LabelFiltro.Visible);
    EXPECT_EQ(r.LabelContagem.Caption, "3 cheques");
    r.Ordena(ColunaLog::Valor, true);
    MontaFiltroLog(s, d, "", "01/02/99", "28/02/99", "", "", "", "", "");
    EXPECT_TRUE(r.LabelFiltro.Visible);
    EXPECT_EQ(indices(r), (QStringList{"0000000002", "0000000001"}));
    EXPECT_EQ(r.LabelContagem.Caption, "2 cheques");
    r.Clica("SSCommand5");
    EXPECT_FALSE(r.LabelFiltro.Visible);
    // The table's cells, in the order by amount: the cancelled cheque spelt out, the amount
    // with its thousands.
    EXPECT_EQ(r.Celulas(2), (QStringList{"", "000123", "001", "1.234,50", "05/02/99",
                                         "Maria D'Ávila", "São Paulo", "Aluguel de fevereiro"}));
    EXPECT_EQ(r.Celulas(1)[ColunaLog::Situacao], "Cancelado");
    const QList<SomaMensal> somas = r.SomasGrafico();
    // The chart's sums are the plain sums of the cheques not cancelled, by month and bank.
    QSqlQuery q(s.Banco->db());
    ASSERT_TRUE(q.exec("SELECT substr(Data,7,2)||substr(Data,4,2), Banco, "
                       "SUM(CAST(round(CAST(replace(V_CH,',','.') AS REAL)*100) AS INTEGER)) "
                       "FROM Log WHERE StCancel <> 'C' GROUP BY 1, 2 ORDER BY 1, 2"));
    for (const SomaMensal &m : somas) {
        ASSERT_TRUE(q.next());
        EXPECT_EQ(m.Mes.mid(2) + m.Banco + QString::number(m.Centavos),
                  q.value(0).toString() + q.value(1).toString() + q.value(2).toString());
    }
    EXPECT_FALSE(q.next());
}

TEST_F(TelaRelato, DatasEGraficoNaOrdemDosSeculos) {
    QList<Cheque> cheques;
    for (int m = 0; m < 30; ++m)
        cheques << Cheque{QString("%1").arg(m + 1, 10, 10, QChar('0')),       "001", "10,", "", "",
                          QDate(1999, 1, 1).addMonths(m).toString("dd/MM/yy")};
    grava(cheques);
    Relato &r = relato();
    // The chart has the last 24 months.
    const QList<SomaMensal> &somas = r.SomasGrafico();
    ASSERT_EQ(somas.size(), 24);
    EXPECT_EQ(somas.first().Mes, "199907");
    EXPECT_EQ(somas.last().Mes, "200106");
    r.Cabecalho_Click(ColunaLog::DataLog);
    EXPECT_EQ(indices(r).first(), "0000000001");
    EXPECT_EQ(indices(r).last(), "0000000030");
}

TEST_F(TelaRelato, PlanilhasTrazemCadaValorDeVolta) {
    grava_exemplo();
    grava({{"0000000004", "001", "2,5", "A; \"B\"", "", "", "", ""}});
    Relato &r = relato();
    const QString csv = pasta.path() + "/cheques.csv", ods = pasta.path() + "/cheques.ods";
    d.CaminhoSalvar = csv;
    r.Clica("Exportar", 0);
    QFile f(csv);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray esperado =
        "\xEF\xBB\xBF"
        "Situação;Nº;Banco;Valor;Data;Favorecido;Cidade;Comentário\r\n"
        "Emitido;000123;001;1234,50;05/02/1999;Maria D'Ávila;São Paulo;Aluguel de fevereiro\r\n"
        "Cancelado;;237;100,00;10/02/1999;João da Silva;Campinas;\r\n"
        "Emitido;77;341;99,99;20/03/1999;Posto 50% Ltda;Santos;\r\n"
        "Emitido;;001;2,50;;\"A; \"\"B\"\"\";;\r\n";
    EXPECT_EQ(f.readAll(), esperado);
    d.CaminhoSalvar = ods;
    r.Clica("Exportar", 1);
    ASSERT_TRUE(QFile::exists(ods));
    const QString soffice = QStandardPaths::findExecutable("soffice");
    if (soffice.isEmpty()) GTEST_SKIP() << "LibreOffice is not installed";
    QProcess p;
    p.setWorkingDirectory(pasta.path());
    p.start(soffice, {"-env:UserInstallation=file://" + pasta.path() + "/lo", "--headless",
                      "--convert-to", "csv:Text - txt - csv (StarCalc):59,34,76,1,,,,,true",
                      "--outdir", pasta.path() + "/lo_csv", ods});
    ASSERT_TRUE(p.waitForFinished(120000));
    QFile volta(pasta.path() + "/lo_csv/cheques.csv");
    ASSERT_TRUE(volta.open(QIODevice::ReadOnly)) << p.readAllStandardError().toStdString();
    // The spreadsheet quotes texts its own way: the values are compared, cell by cell.
    const auto celulas = [](QByteArray b) {
        if (b.startsWith("\xEF\xBB\xBF")) b = b.mid(3);
        QStringList c = QString::fromUtf8(b).replace("\r\n", "\n").split('\n', Qt::SkipEmptyParts);
        for (QString &l : c)
            l.remove('"');
        return c;
    };
    EXPECT_EQ(celulas(volta.readAll()), celulas(esperado));
}

// Cancelar in the progress of each long road, in the middle of the rows: no file, nothing
// printed, no cheque marked, none purged.
enum class Caminho { Csv, Ods, Geral, ListaArquivo, ListaSistema, ListaVexa, Todos, Expurgo };
struct Parada {
    Caminho caminho;
    QString janela;
};
class ParadaNoMeio : public Cancelamento, public ::testing::WithParamInterface<Parada> {};

TEST_P(ParadaNoMeio, NaoDeixaNadaPelaMetade) {
    grava_exemplo();
    Relato &r = relato();
    d.CancelaNoValor = 1;
    d.CaminhoSalvar = pasta.path() + "/parou.txt";
    switch (GetParam().caminho) {
    case Caminho::Csv:
    case Caminho::Ods:
        r.Clica("Exportar", GetParam().caminho == Caminho::Ods);
        break;
    case Caminho::Geral:
        r.Clica("criar");
        break;
    case Caminho::ListaArquivo:
    case Caminho::ListaSistema:
    case Caminho::ListaVexa:
        r.Clica(GetParam().caminho == Caminho::ListaSistema ? "OpCmd02"
                : GetParam().caminho == Caminho::ListaVexa  ? "OpCmd"
                                                            : "OpCmd01",
                0);
        d.Respostas = {Resposta::OK};
        r.Clica("SSCommand1");
        break;
    case Caminho::Todos: {
        ExcluiRel &e = cancelamento(r);
        escolhe(e, 1, false, true);
        d.Respostas = {Resposta::Yes};
        e.Clica("BtnCmd", 0);
        break;
    }
    case Caminho::Expurgo:
        // The purge stops between keeping the old cheques and deleting them.
        d.CancelaNaEtapa = 2;
        s.PeriodoRel = 30;
        d.Respostas = {Resposta::Yes};
        ExpurgaCheques(s, d);
        break;
    }
    EXPECT_EQ(d.Progressos.value(0), GetParam().janela);
    EXPECT_FALSE(QFile::exists(d.CaminhoSalvar));
    EXPECT_TRUE(d.Impressos.isEmpty());
    EXPECT_TRUE(QDir(imp().PastaPapel()).entryList({"*.txt"}, QDir::Files).isEmpty());
    EXPECT_EQ(indices(r), tres);
    EXPECT_EQ(cancelados(), QStringList{"0000000002"});
    EXPECT_EQ(Conjunto(s, TabLog).RecordCount(), 3);
}

INSTANTIATE_TEST_SUITE_P(Relatorio, ParadaNoMeio,
                         ::testing::Values(Parada{Caminho::Csv, "Exportar Planilha"},
                                           Parada{Caminho::Ods, "Exportar Planilha"},
                                           Parada{Caminho::Geral, "Relatório Geral"},
                                           Parada{Caminho::ListaArquivo, "Enviar Lista"},
                                           Parada{Caminho::ListaSistema, "Enviar Lista"},
                                           Parada{Caminho::ListaVexa, "Enviar Lista"},
                                           Parada{Caminho::Todos, "Opções de Cancelamento"},
                                           Parada{Caminho::Expurgo, "Expurgo de Cheques"}));
