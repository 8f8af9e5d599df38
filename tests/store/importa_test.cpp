// The import from the old program: its database, settings and transfer list taken whole, or
// nothing taken, and the operator told.
#include "../registers/registros_apoio.h"
#include "apoio/referencia.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "reports/filtro.h"
#include "reports/relato.h"
#include "settings/importa.h"
#include "store/leitura_direta.h"
#include "store/tabelas.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSqlQuery>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

const QString Legado = QStringLiteral(VEXA_TESTES_DADOS "/legado/");
const QString Titulo = QStringLiteral("Importar do Vexa antigo");

// The old settings as the old program left them: Windows-1252, CRLF.
const QByteArray IniVelho = "[Sistema]\r\nport=COM1\r\nm_sg=Real\r\n[Opcoes]\r\n"
                            "PeriodoRelExc=90\r\nNumChkPgRel=40\r\n[Config]\r\nFirstTime=1\r\n"
                            "[FrenteInfo]\r\nCampo00Lin=5\r\nCampo00Col=60\r\nCidade=S\xE3o "
                            "Paulo\r\nValor=\r\n[ChequeTransf]\r\n"
                            "104=002,005,007,011,011,014,014,090,020,008,058,090,058,090    ; "
                            "Caixa Econ\xF4mica Federal\r\n";
const QByteArray ListaVelha = "104 - Caixa Econ\xF4mica Federal\r\n999 - Banco Velho\r\n";

class Importa : public teste::Registros {
  protected:
    // A new data folder, as the program delivers it: its preset layouts are no office's data.
    Importa() { layouts_de_fabrica = true; }

    // The old folder: a copy of one of the test databases as VEXA.MDB, with the old settings
    // and transfer list beside it.
    void prepara_velha(const QString &mdb) {
        velha = pasta.path() + "/antigo";
        QDir().mkpath(velha);
        ASSERT_TRUE(QFile::copy(Legado + mdb, velha + "/VEXA.MDB"));
        escreve(velha + "/VEXA.INI", IniVelho);
        escreve(velha + "/ChequeTransf.txt", ListaVelha);
        digest_velha = digest(velha);
    }
    static void escreve(const QString &arquivo, const QByteArray &bytes) {
        QFile f(arquivo);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    static QByteArray digest(const QString &dir) {
        QCryptographicHash h(QCryptographicHash::Sha256);
        for (const QString &f : QDir(dir).entryList(QDir::Files, QDir::Name)) {
            QFile a(dir + "/" + f);
            a.open(QIODevice::ReadOnly);
            h.addData(f.toUtf8());
            h.addData(a.readAll());
        }
        return h.result();
    }
    // The whole store, one text: what must not change when an import is refused.
    QString retrato() {
        EXPECT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
        QString t;
        for (const char *tabela :
             {"Bancos", "Transferencia", "Script", "Favorecido", "Cidade", "Log"})
            for (LeituraDireta l(s.Banco->db(), QString("SELECT * FROM ") + tabela); l.Proxima();)
                t += l.Texto(0) + l.Texto(1) + "\n";
        QFile ini(s.CaminhoIni);
        ini.open(QIODevice::ReadOnly);
        return t + ini.readAll();
    }
    QString relatorio() {
        const QStringList r = QDir(s.CaminhoApp).entryList({"Importacao-*.txt"});
        return r.size() == 1 ? teste::le_utf8(s.CaminhoApp + "/" + r[0]) : QString();
    }
    QString ini(const QString &secao, const QString &chave) {
        return LeGravaIni(s.CaminhoIni, secao, chave, "");
    }

    QString velha;
    QByteArray digest_velha;
};

// The large file: every row counted, and the marks the register keeps.
TEST_F(Importa, GrandeEntraInteiro) {
    prepara_velha("VEXA-grande.MDB");
    ASSERT_TRUE(importa_pasta(s, d, velha)) << d.Textos().join('|').toStdString();
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith(
        "Importação concluída.\n\nBancos: 30\nTransferencia: 5\nScript: 3\nFavorecido: "
        "99.999\nCidade: 76\nLog: 100.000\n"))
        << d.Mensagens[0].Texto.toStdString();
    const auto um = [&](const QString &sql) {
        LeituraDireta l(s.Banco->db(), sql);
        return l.Proxima() ? l.Texto(0) : QString();
    };
    EXPECT_EQ(um("SELECT count(*) || ' ' || min(Codigo) || ' ' || max(Codigo) FROM Favorecido"),
              "99999 00001 99999");
    EXPECT_EQ(um("SELECT count(*) || ' ' || max(\"Index\") FROM Log"), "100000 0000100432");
    EXPECT_EQ(um("SELECT count(*) FROM Log WHERE StCancel = 'C'"), "2742");
    EXPECT_EQ(um("SELECT count(*) FROM Log WHERE length(Data) = 10"), "11999");
    EXPECT_EQ(digest(velha), digest_velha);
}

// Every table of the small file, row for row, against what the file holds.
TEST_F(Importa, PequenoEntraInteiroETudoEContado) {
    prepara_velha("VEXA-pequeno.MDB");
    ASSERT_TRUE(importa_pasta(s, d, velha)) << d.Textos().join('|').toStdString();
    const QString esperado = Legado + "esperado/VEXA-pequeno.MDB/";
    for (const QString tabela :
         {"Bancos", "Transferencia", "Script", "Favorecido", "Cidade", "Log"}) {
        const QStringList linhas =
            teste::le_utf8(esperado + tabela + ".tsv").split('\n', Qt::SkipEmptyParts);
        QStringList campos = linhas[0].split('\t');
        for (QString &c : campos)
            c = '"' + c + '"';
        QStringList lidas;
        const QString sql = "SELECT " + campos.join(',') + " FROM " + tabela + " WHERE " +
                            campos[0] + " IN (SELECT " + campos[0] + " FROM " + tabela +
                            ") ORDER BY " + campos[0];
        for (LeituraDireta l(s.Banco->db(), sql); l.Proxima();) {
            QStringList f;
            for (int i = 0; i < campos.size(); ++i)
                f << l.Texto(i);
            lidas << f.join('\t');
        }
        QStringList esperadas = linhas.mid(1);
        // NULL and an empty text come out of the old file alike, and are stored as empty text.
        for (QString &e : esperadas)
            e = e.split('\t').replaceInStrings(QRegularExpression("^\\\\N$"), "").join('\t');
        if (tabela == "Bancos") {
            // The presets of the new store that the old file lacks stay beside its banks.
            QStringList so_velhos;
            for (const QString &l : lidas)
                if (std::any_of(esperadas.begin(), esperadas.end(),
                                [&](const QString &e) { return e.left(4) == l.left(4); }))
                    so_velhos << l;
            lidas = so_velhos;
        }
        lidas.sort();
        esperadas.sort();
        EXPECT_EQ(lidas, esperadas) << tabela.toStdString();
    }

    // Names are found as the program's own: by their folded key.
    FiltraTabela(s, "joão d'", TabFavorecido);
    Conjunto(s, TabFavorecido).MoveFirst();
    EXPECT_EQ(Conjunto(s, TabFavorecido).Campo("Nome"), "João D'Ângelo Neto");

    // Told: the progress, the message and the report.
    EXPECT_EQ(d.Progressos,
              QStringList(
                  {Titulo, Titulo + ": Lendo a tabela Bancos...",
                   Titulo + ": Lendo a tabela Transferencia...",
                   Titulo + ": Lendo a tabela Script...", Titulo + ": Lendo a tabela Favorecido...",
                   Titulo + ": Lendo a tabela Cidade...", Titulo + ": Lendo a tabela Log...",
                   Titulo + ": Lendo VEXA.INI e ChequeTransf.txt..."}));
    ASSERT_EQ(d.Mensagens.size(), 1);
    EXPECT_EQ(d.Mensagens[0].Titulo, Titulo);
    EXPECT_TRUE(d.Mensagens[0].Texto.startsWith(
        "Importação concluída.\n\nBancos: 30\nTransferencia: 5\nScript: 3\nFavorecido: 300\n"
        "Cidade: 60\nLog: 2.000\n\nLinhas com valores duvidosos: 0\nBancos do registro sem "
        "leiaute: 2\nChaves tomadas do VEXA.INI: 13\n"))
        << d.Mensagens[0].Texto.toStdString();
    const QString r = relatorio();
    for (const char *linha :
         {"Resultado: importado.", "  Log                 2.000", "  356 (39 cheques)",
          "  409 (77 cheques)", "  [FrenteInfo] Cidade = São Paulo", "  [FrenteInfo] Valor = ",
          "  [ChequeTransf] 001 = 002,005,007,012,012,015,015,091,023,008,060,093,060,093    ; "
          "Banco do Brasil S.A. (da tabela Transferencia)",
          "ChequeTransf.txt: 0 bancos acrescentados"})
        EXPECT_TRUE(r.contains(linha)) << linha << "\n" << r.toStdString();

    // The settings merged, the first-run mark left alone, the old files never written.
    EXPECT_EQ(ini("Sistema", "port"), "COM1");
    EXPECT_EQ(ini("Opcoes", "PeriodoRelExc"), "90");
    EXPECT_EQ(ini("FrenteInfo", "Campo00Lin"), "5");
    EXPECT_EQ(ini("FrenteInfo", "Cidade"), "São Paulo");
    EXPECT_EQ(ini("Config", "FirstTime"), "1");
    EXPECT_EQ(ini("ChequeTransf", "104").mid(61), "Caixa Econômica Federal");
    QFile lista(s.CaminhoApp + "/ChequeTransf.txt");
    ASSERT_TRUE(lista.open(QIODevice::ReadOnly));
    // The old list's own line; a bank without a layout anywhere stays out.
    const QByteArray novaLista = lista.readAll();
    EXPECT_TRUE(novaLista.contains("\r\n104 - Caixa Econ\xF4mica Federal\r\n"));
    EXPECT_FALSE(novaLista.contains("999"));
    EXPECT_EQ(digest(velha), digest_velha);
}

// The imported register is the report screen's: the list and the filter find the old cheques.
struct Busca {
    const char *caso;
    QStringList
        campos; // Banco, DataIni, DataFim, ValorIni, ValorFim, Favorecido, Cidade, Comentario
    int quantos;
    QString primeiro;
};
class FiltroImportado : public Importa, public ::testing::WithParamInterface<Busca> {};

TEST_P(FiltroImportado, AchaOsChequesAntigos) {
    prepara_velha("VEXA-pequeno.MDB");
    ASSERT_TRUE(importa_pasta(s, d, velha));
    EXPECT_EQ(abre<Relato>().List1.ListCount(), 2000);
    const QStringList &c = GetParam().campos;
    MontaFiltroLog(s, d, c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7]);
    RecordSet &rs = Conjunto(s, TabLog);
    EXPECT_EQ(rs.RecordCount(), GetParam().quantos);
    rs.MoveFirst();
    EXPECT_EQ(rs.Campo("Index"), GetParam().primeiro);
}

INSTANTIATE_TEST_SUITE_P(
    Importa, FiltroImportado,
    ::testing::Values(
        Busca{"banco_fora_dos_leiautes", {"409", "", "", "", "", "", "", ""}, 77, "0000000050"},
        Busca{"favorecido_com_apostrofo",
              {"", "", "", "", "", "D'Ávila Materiais de Construção Ltda.", "", ""},
              6,
              "0000000098"},
        Busca{"dia_29_de_fevereiro",
              {"", "29/02/24", "29/02/24", "", "", "", "", ""},
              3,
              "0000001065"},
        Busca{"centavos_sem_inteiro", {"", "", "", "0,75", "0,75", "", "", ""}, 1, "0000000392"},
        Busca{"parcela_agrupada",
              {"", "", "", "11.608,86", "11.608,86", "", "", ""},
              3,
              "0000000045"},
        Busca{"inteiro_com_virgula",
              {"", "", "", "1.250.000,00", "1.250.000,00", "", "", ""},
              1,
              "0000000580"}),
    [](const auto &i) { return std::string(i.param.caso); });

// Refused or cancelled: the store and the settings stay byte for byte, the old files too, and
// the operator reads why.
enum class Caso { Estranho, Cortado, Cancelado, DiscoCheio, BaseEmUso };
struct Recusa {
    const char *caso;
    Caso tipo;
    const char *mdb;
    QString mensagem;
    QStringList no_relatorio;
};
class ImportaRecusa : public Importa, public ::testing::WithParamInterface<Recusa> {};

TEST_P(ImportaRecusa, NadaMudaEOOperadorSabePorque) {
    const Recusa &c = GetParam();
    prepara_velha(c.mdb);
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
    if (c.tipo == Caso::BaseEmUso) inclui(TabFavorecido, {{"00001", "Pagador de hoje"}});
    if (c.tipo == Caso::DiscoCheio) {
        // The database takes a few pages more, as a disk that fills up halfway.
        QSqlQuery q(s.Banco->db());
        ASSERT_TRUE(q.exec("PRAGMA page_count") && q.next());
        const int paginas = q.value(0).toInt();
        q.finish();
        ASSERT_TRUE(q.exec(QString("PRAGMA max_page_count = %1").arg(paginas + 40)));
    }
    if (c.tipo == Caso::Cancelado) d.CancelaNaEtapa = 4;
    if (c.tipo == Caso::BaseEmUso) d.Respostas = {Resposta::No};
    const QString antes = retrato();

    EXPECT_FALSE(importa_pasta(s, d, velha));
    EXPECT_EQ(retrato(), antes);
    EXPECT_EQ(digest(velha), digest_velha);
    ASSERT_FALSE(d.Mensagens.isEmpty());
    const auto &m = d.Mensagens.last();
    EXPECT_TRUE(m.Texto.startsWith(c.mensagem)) << m.Texto.toStdString();
    EXPECT_EQ(m.Titulo, Titulo);
    if (c.tipo == Caso::BaseEmUso) EXPECT_EQ(m.Padrao, Resposta::No);
    const QString r = relatorio();
    for (const QString &l : c.no_relatorio)
        EXPECT_TRUE(r.contains(l)) << (l + "\n" + r).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Importa, ImportaRecusa,
    ::testing::Values(
        Recusa{"tabela_ausente_campo_a_mais_valor_que_nao_e_numero",
               Caso::Estranho,
               "VEXA-estranho.MDB",
               "A importação não foi feita e a base de dados ficou como estava:\n\nO arquivo não "
               "tem a tabela Script.\n\nO relatório completo está em",
               {"Resultado: NÃO importado.",
                "  Log, Index 0000000017: V_CH \"15,OO\" não é um valor.",
                "não importados: Favorecido.Telefone", "  Log                    60"}},
        Recusa{"arquivo_cortado",
               Caso::Cortado,
               "VEXA-cortado.MDB",
               "A importação não foi feita e a base de dados ficou como estava:\n\nA tabela Log "
               "do arquivo tem 2.000 linhas, e só 721 puderam ser lidas (23 linhas vazias): o "
               "arquivo está danificado ou incompleto.\n\n",
               {}},
        Recusa{"cancelar_no_meio",
               Caso::Cancelado,
               "VEXA-pequeno.MDB",
               "Importação cancelada. A base de dados ficou como estava.",
               {}},
        Recusa{"disco_cheio",
               Caso::DiscoCheio,
               "VEXA-pequeno.MDB",
               "A importação não foi feita e a base de dados ficou como estava:\n\nA base de "
               "dados não aceitou a gravação: o disco está cheio ou o arquivo não aceita "
               "gravação.\n\n",
               {}},
        Recusa{"base_em_uso_e_nao_ao_substituir",
               Caso::BaseEmUso,
               "VEXA-pequeno.MDB",
               "A base de dados deste programa já tem cheques ou cadastros, e a importação os "
               "substitui pelos do Vexa antigo.\n\nFazer uma cópia de segurança da base atual e "
               "substituí-la?",
               {}}),
    [](const auto &i) { return std::string(i.param.caso); });

TEST_F(Importa, BaseEmUsoComCopiaESubstituida) {
    prepara_velha("VEXA-pequeno.MDB");
    inclui(TabFavorecido, {{"00001", "Pagador de hoje"}});
    d.Respostas = {Resposta::Yes};
    ASSERT_TRUE(importa_pasta(s, d, velha)) << d.Textos().join('|').toStdString();
    EXPECT_EQ(NomeFavorecido(s, "00001"), "Patrícia Lustosa Teixeira");
    const QStringList copias = QDir(s.CaminhoApp).entryList({"VEXA-antes-da-importacao-*.db"});
    ASSERT_EQ(copias.size(), 1);
    EXPECT_TRUE(relatorio().contains("Cópia de segurança da base anterior:"));
    // Replaced whole: no preset bank is left beside the old file's.
    ASSERT_NE(AbreTabelas(s, d, 0, 0, 0, 0), -2);
    LeituraDireta n(s.Banco->db(), "SELECT count(*) FROM Bancos");
    ASSERT_TRUE(n.Proxima());
    EXPECT_EQ(n.Inteiro(0), 30);
}

} // namespace
