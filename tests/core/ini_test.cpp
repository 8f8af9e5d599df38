#include "core/ini.h"
#include "core/montagem.h"
#include "core/sessao.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace vexa;

namespace {

// A settings file as operators bring it: Windows-1252 bytes, CRLF, odd spacing and case, a
// duplicate key, a duplicate section and one line ending in LF alone.
const QByteArray Modelo = "; configura\xe7\xe3o da impressora\r\n"
                          "[Sistema]\r\n"
                          "port=COM1\r\n"
                          "  M_SG  =  Real  \r\n"
                          "Favorecido=\"  Jo\xe3o  \"\r\n"
                          "Apelido='Z\xe9'\r\n"
                          "Meia=\"aberta\r\n"
                          "Vazio=\r\n"
                          "SoNome\r\n"
                          "Menos=-2\r\n"
                          "MenosVinte=-25\r\n"
                          "Menos3=-3\r\n"
                          "Nota=COM1 ; depois do valor\r\n"
                          "Dup=primeiro\r\n"
                          "dup=segundo\r\n"
                          ";Comentada=1\r\n"
                          "\r\n"
                          "[ sistema ]\r\n"
                          "Outra=x\r\n"
                          "[FrenteInfo]\n"
                          "Cidade=S\xe3o Paulo";

class Ini : public ::testing::Test {
  protected:
    QString caminho() const { return pasta.filePath("VEXA.INI"); }
    void poe(const QByteArray &bytes) {
        QFile f(caminho());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    QByteArray conteudo() const {
        QFile f(caminho());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<sem arquivo>");
    }
    std::string le(const QString &secao, const QString &chave) const {
        return LeGravaIni(caminho(), secao, chave, "").toStdString();
    }
    std::string grava(const QString &secao, const QString &chave, const QString &valor) const {
        return LeGravaIni(caminho(), secao, chave, valor).toStdString();
    }
    QTemporaryDir pasta;
};

struct CasoLeitura {
    const char *secao;
    const char *chave;
    const char *esperado; // UTF-8
};

void PrintTo(const CasoLeitura &c, std::ostream *os) {
    *os << c.secao << "/" << c.chave;
}

class LeituraIni : public Ini, public ::testing::WithParamInterface<CasoLeitura> {};

TEST_P(LeituraIni, LeComoAsRotinasDePerfil) {
    poe(Modelo);
    const CasoLeitura c = GetParam();
    EXPECT_EQ(le(c.secao, c.chave), c.esperado) << c.secao << "/" << c.chave;
}

INSTANTIATE_TEST_SUITE_P(
    Modelo, LeituraIni,
    ::testing::Values(
        CasoLeitura{"Sistema", "port", "COM1"}, CasoLeitura{"SISTEMA", "PORT", "COM1"},
        CasoLeitura{"Sistema", "m_sg", "Real"}, CasoLeitura{"Sistema", "Favorecido", "  João  "},
        CasoLeitura{"Sistema", "Apelido", "Zé"}, CasoLeitura{"Sistema", "Meia", "\"aberta"},
        CasoLeitura{"Sistema", "Vazio", ""}, CasoLeitura{"Sistema", "SoNome", "-2"},
        CasoLeitura{"Sistema", "Menos", "-2"}, CasoLeitura{"Sistema", "MenosVinte", "-2"},
        CasoLeitura{"Sistema", "Menos3", "-3"},
        CasoLeitura{"Sistema", "Nota", "COM1 ; depois do valor"},
        CasoLeitura{"Sistema", "Dup", "primeiro"}, CasoLeitura{"Sistema", "Comentada", "-2"},
        CasoLeitura{"Sistema", "Outra", "-2"}, CasoLeitura{"Sistema", "Falta", "-2"},
        CasoLeitura{"Nada", "port", "-2"}, CasoLeitura{"frenteinfo", "cidade", "São Paulo"},
        CasoLeitura{"", "port", "-2"}));

class TamanhoLido : public Ini, public ::testing::WithParamInterface<int> {};

TEST_P(TamanhoLido, CortaEm159Caracteres) {
    const QByteArray valor(GetParam(), 'x');
    poe("[Verso]\r\nLinha00=" + valor + "\r\n");
    EXPECT_EQ(le("Verso", "Linha00").size(), size_t(qMin(GetParam(), 159)));
}

INSTANTIATE_TEST_SUITE_P(Comprimentos, TamanhoLido, ::testing::Values(159, 400));

TEST_F(Ini, ArquivoFaltandoLeComoSemChavesEGravarCriaEmCRLF) {
    EXPECT_EQ(le("Config", "FirstTime"), "-2");
    EXPECT_EQ(grava("Config", "FirstTime", "1"), "1");
    EXPECT_EQ(grava("Sistema", "port", "COM2"), "1");
    EXPECT_EQ(conteudo().toStdString(), "[Config]\r\nFirstTime=1\r\n[Sistema]\r\nport=COM2\r\n");
}

TEST_F(Ini, GravarTrocaSoALinhaDaChaveEGuardaAGrafiaDela) {
    poe(Modelo);
    EXPECT_EQ(grava("SISTEMA", "M_sg", "Peso"), "1");
    EXPECT_EQ(grava("frenteinfo", "CIDADE", "Santos"), "1");
    QByteArray esperado = Modelo;
    esperado.replace("  M_SG  =  Real  \r\n", "M_SG=Peso\r\n");
    // The unterminated last line gets its line end when it is rewritten.
    esperado.replace("Cidade=S\xe3o Paulo", "Cidade=Santos\r\n");
    EXPECT_EQ(conteudo().toStdString(), esperado.toStdString());
}

TEST_F(Ini, ChaveDuplicadaGravaAPrimeira) {
    poe(Modelo);
    grava("Sistema", "DUP", "novo");
    EXPECT_EQ(le("Sistema", "dup"), "novo");
    EXPECT_TRUE(conteudo().contains("Dup=novo\r\ndup=segundo\r\n"));
}

struct CasoChaveNova {
    const char *antes;
    const char *secao;
    const char *depois;
};

void PrintTo(const CasoChaveNova &c, std::ostream *os) {
    *os << '"' << c.antes << '"';
}

class ChaveNova : public Ini, public ::testing::WithParamInterface<CasoChaveNova> {};

TEST_P(ChaveNova, EntraDepoisDaUltimaChaveDaSecao) {
    poe(GetParam().antes);
    EXPECT_EQ(grava(GetParam().secao, "k", "v"), "1");
    EXPECT_EQ(conteudo().toStdString(), GetParam().depois);
}

INSTANTIATE_TEST_SUITE_P(
    Lugares, ChaveNova,
    ::testing::Values(
        // Comments and blank lines that close a section stay after the new key.
        CasoChaveNova{"[A]\r\na=1\r\n; nota\r\n\r\n[B]\r\nb=1\r\n", "A",
                      "[A]\r\na=1\r\nk=v\r\n; nota\r\n\r\n[B]\r\nb=1\r\n"},
        CasoChaveNova{"[A]\r\n\r\n[B]\r\nb=1\r\n", "a", "[A]\r\nk=v\r\n\r\n[B]\r\nb=1\r\n"},
        CasoChaveNova{"[A]\r\na=1", "A", "[A]\r\na=1\r\nk=v\r\n"},
        // A new section follows the last line directly, which gets its CRLF when it had none.
        CasoChaveNova{"[A]\r\na=1", "C", "[A]\r\na=1\r\n[C]\r\nk=v\r\n"},
        CasoChaveNova{"[A]\r\na=1\r\n", "C", "[A]\r\na=1\r\n[C]\r\nk=v\r\n"},
        CasoChaveNova{"[A]\r\na=1\r\n\r\n", "C", "[A]\r\na=1\r\n\r\n[C]\r\nk=v\r\n"},
        // Rewriting a key on an unterminated last line ends that line.
        CasoChaveNova{"[A]\r\nk=1", "A", "[A]\r\nk=v\r\n"},
        CasoChaveNova{"[A]\r\nk=1\r\n", "A", "[A]\r\nk=v\r\n"},
        // CR alone ends a line: the key is found on its own line and only that line changes.
        CasoChaveNova{"[A]\rk=1\r[B]\rb=2", "A", "[A]\rk=v\r[B]\rb=2"},
        CasoChaveNova{"[A]\ra=1\r[B]\rb=2", "b", "[A]\ra=1\r[B]\rb=2\r\nk=v\r\n"},
        // A line without "=" is no key: the new key goes after the last real one, the line
        // stays as it was.
        CasoChaveNova{"[A]\r\na=1\r\nk\r\n", "A", "[A]\r\na=1\r\nk=v\r\nk\r\n"},
        // The UTF-8 mark does not hide the section on the first line.
        CasoChaveNova{"\xEF\xBB\xBF[A]\r\nk=1\r\n", "A", "\xEF\xBB\xBF[A]\r\nk=v\r\n"},
        CasoChaveNova{"\xEF\xBB\xBF[A]\r\n", "A", "\xEF\xBB\xBF[A]\r\nk=v\r\n"},
        // A file written with LF alone goes on with LF.
        CasoChaveNova{"[A]\na=1\n", "A", "[A]\na=1\nk=v\n"},
        CasoChaveNova{"", "A", "[A]\r\nk=v\r\n"}));

TEST_F(Ini, EsvaziarDeixaAChaveComNadaDepoisDoIgual) {
    poe("[Config]\r\nFirstTime=1\r\n");
    EXPECT_EQ(grava("Config", "FirstTime", "*%*"), "1");
    EXPECT_EQ(conteudo().toStdString(), "[Config]\r\nFirstTime=\r\n");
    EXPECT_EQ(le("Config", "FirstTime"), "");
    Sessao s(pasta.path());
    EXPECT_EQ(s.LeNumero("Config", "FirstTime", 1), 0);
}

TEST_F(Ini, TextoVaiEmWindows1252EVolta) {
    EXPECT_EQ(grava("FrenteInfo", "Favorecido", "Conceição D'Ávila €"), "1");
    EXPECT_TRUE(conteudo().contains("Favorecido=Concei\xe7\xe3o D'\xc1vila \x80\r\n"));
    EXPECT_EQ(le("FrenteInfo", "Favorecido"), "Conceição D'Ávila €");
}

TEST_F(Ini, ArquivoComMarcaUtf8FicaEmUtf8) {
    poe("\xEF\xBB\xBF[Sistema]\r\nm_sg=Ca\xC3\xA7"
        "a\r\n");
    EXPECT_EQ(le("Sistema", "m_sg"), "Caça");
    grava("Sistema", "m_pl", "Maçãs");
    EXPECT_EQ(conteudo().toStdString(), "\xEF\xBB\xBF[Sistema]\r\nm_sg=Ca\xC3\xA7"
                                        "a\r\nm_pl=Ma\xC3\xA7\xC3\xA3s\r\n");
}

struct CasoBytes {
    const char *bytes;
    const char *chave; // in section A
    const char *esperado;
};

void PrintTo(const CasoBytes &c, std::ostream *os) {
    *os << QByteArray(c.bytes).toHex(' ').toStdString() << " / " << c.chave;
}

class LeituraCrua : public Ini, public ::testing::WithParamInterface<CasoBytes> {};

TEST_P(LeituraCrua, LinhasMarcasEChavesSemIgual) {
    poe(GetParam().bytes);
    EXPECT_EQ(le("A", GetParam().chave), GetParam().esperado);
}

INSTANTIATE_TEST_SUITE_P(Arquivos, LeituraCrua,
                         ::testing::Values(CasoBytes{"[A]\rk=1\rj=2", "j", "2"},
                                           CasoBytes{"[A]\rk=1\rj=2", "k", "1"},
                                           CasoBytes{"[A]\n\rk=1\r\n", "k", "1"},
                                           CasoBytes{"\xEF\xBB\xBF[A]\r\nk=1", "k", "1"},
                                           CasoBytes{"\xEF\xBB\xBF[A]\rk=\xC3\xA7", "k", "ç"},
                                           CasoBytes{"\xEF\xBB\xBFk=1\r\n[A]\r\nj=2", "j", "2"},
                                           CasoBytes{"[A]\r\nk\r\n", "k", "-2"},
                                           CasoBytes{"[A]\r\n  k  \r\nk=3\r\n", "k", "3"}));

TEST_F(Ini, QuebraDeLinhaNoValorNaoCriaChaves) {
    grava("Verso", "Linha00", "um\r\n[Sistema]\nport=X");
    EXPECT_EQ(le("Verso", "Linha00"), "um  [Sistema] port=X");
    EXPECT_EQ(le("Sistema", "port"), "-2");
}

TEST_F(Ini, GravacaoTrocaOArquivoInteiroSemMexerNoAntigo) {
    poe("[Sistema]\r\nport=COM1\r\n");
    // A second name of the old file keeps the old bytes only if the new text went to a new
    // file renamed over it, never into the old file in place.
    ASSERT_EQ(::link(QFile::encodeName(caminho()).constData(),
                     QFile::encodeName(pasta.filePath("elo.ini")).constData()),
              0);
    EXPECT_EQ(grava("Sistema", "port", "COM3"), "1");
    QFile elo(pasta.filePath("elo.ini"));
    ASSERT_TRUE(elo.open(QIODevice::ReadOnly));
    EXPECT_EQ(elo.readAll().toStdString(), "[Sistema]\r\nport=COM1\r\n");
    EXPECT_EQ(conteudo().toStdString(), "[Sistema]\r\nport=COM3\r\n");
    EXPECT_EQ(QDir(pasta.path()).entryList(QDir::Files).size(), 2) << "no temporary file left";
}

TEST_F(Ini, FalhaDeGravacaoDevolveNegativo) {
    // A path that is a folder can neither be read nor replaced; nor can a path under a file.
    QDir(pasta.path()).mkdir("VEXA.INI");
    EXPECT_EQ(le("Sistema", "port"), "-2");
    EXPECT_EQ(grava("Sistema", "port", "COM3"), "-1");
    EXPECT_EQ(LeGravaIni(pasta.filePath("falta/VEXA.INI"), "A", "b", "c").toStdString(), "-1");
    QFile arquivo(pasta.filePath("arquivo"));
    ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
    arquivo.close();
    EXPECT_EQ(LeGravaIni(pasta.filePath("arquivo/VEXA.INI"), "A", "b", "c").toStdString(), "-1");
}

// Runs in a mount namespace of its own: a read-only file system refuses root as well.
TEST_F(Ini, PastaSemEscritaDevolveNegativoEGuardaOArquivo) {
    using teste::Filho;
    const Filho filho = teste::roda_em_montagem_propria();
    if (filho == Filho::SemMontagem) GTEST_SKIP() << "no mount namespace on this machine";
    if (filho != Filho::Dentro) return;
    const teste::Montagem tmpfs(pasta.path(), 64);
    if (!tmpfs.montada) GTEST_SKIP() << "tmpfs can't be mounted";
    poe("[Sistema]\r\nport=COM1\r\n");
    ASSERT_TRUE(teste::monta_so_leitura(pasta.path()));
    EXPECT_EQ(grava("Sistema", "port", "COM3"), "-1");
    EXPECT_EQ(grava("Sistema", "nova", "x"), "-1");
    EXPECT_EQ(conteudo().toStdString(), "[Sistema]\r\nport=COM1\r\n");
    EXPECT_EQ(le("Sistema", "port"), "COM1");
}

// A disk that fills up halfway through the new file, or before its first byte: the write
// answers failure and the old file stays byte for byte, with no temporary file beside it.
class DiscoCheio : public Ini, public ::testing::WithParamInterface<int> {};

TEST_P(DiscoCheio, GravacaoFalhaEOArquivoFicaComoEra) {
    using teste::Filho;
    const Filho filho = teste::roda_em_montagem_propria();
    if (filho == Filho::SemMontagem) GTEST_SKIP() << "no mount namespace on this machine";
    if (filho != Filho::Dentro) return;
    const teste::Montagem tmpfs(pasta.path(), 64);
    if (!tmpfs.montada) GTEST_SKIP() << "tmpfs can't be mounted";

    // Just under one page of settings; the new value takes it over the page.
    QByteArray antigo = "[Verso]\r\n";
    for (int i = 0; antigo.size() < 3900; ++i)
        antigo +=
            "Linha0" + QByteArray::number(i % 10) + "=" + QByteArray(100, 'a' + i % 26) + "\r\n";
    poe(antigo);
    {
        QFile enche(pasta.filePath("enche"));
        ASSERT_TRUE(enche.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const QByteArray bloco(512, 'x');
        while (enche.write(bloco) == bloco.size()) {
        }
        // Free what the case leaves for the new file: nothing, or one page.
        ASSERT_TRUE(enche.resize(enche.size() - GetParam()));
    }
    const QString valor(400, u'z');
    EXPECT_EQ(grava("Sistema", "m_sg", valor), "-1");
    EXPECT_EQ(grava("Verso", "Linha00", valor), "-1");
    EXPECT_EQ(conteudo(), antigo);
    EXPECT_EQ(QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              (QStringList{"VEXA.INI", "enche"}));

    // With room again the same write goes through.
    QFile::remove(pasta.filePath("enche"));
    EXPECT_EQ(grava("Sistema", "m_sg", valor), "1");
    EXPECT_EQ(le("Sistema", "m_sg"), valor.left(159).toStdString());
}

INSTANTIATE_TEST_SUITE_P(Livre, DiscoCheio, ::testing::Values(0, 4096));

struct CasoNumero {
    const char *guardado; // nullptr: key missing
    int esperado;
};

void PrintTo(const CasoNumero &c, std::ostream *os) {
    *os << (c.guardado ? c.guardado : "(missing)");
}

class NumeroIni : public Ini, public ::testing::WithParamInterface<CasoNumero> {};

TEST_P(NumeroIni, LeONumeroDoComecoDoTexto) {
    if (GetParam().guardado) grava("Opcoes", "PeriodoRelExc", GetParam().guardado);
    Sessao s(pasta.path());
    EXPECT_EQ(s.LeNumero("Opcoes", "PeriodoRelExc", 30), GetParam().esperado);
}

INSTANTIATE_TEST_SUITE_P(Valores, NumeroIni,
                         ::testing::Values(CasoNumero{nullptr, 30}, CasoNumero{"12 dias", 12},
                                           CasoNumero{"abc", 0}, CasoNumero{"-25", 30},
                                           CasoNumero{"99999", 32767}));

} // namespace
