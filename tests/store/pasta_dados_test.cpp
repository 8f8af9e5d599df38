#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace vexa;

namespace {

QByteArray bytes_de(const QString &caminho) {
    QFile f(caminho);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<sem arquivo>");
}

struct CasoPasta {
    const char *nome;
    bool temIni, temBase;
    bool baseDepois;
    const char *firstTime; // FirstTime after the start
};

void PrintTo(const CasoPasta &c, std::ostream *os) {
    *os << c.nome;
}

class PastaDados : public ::testing::TestWithParam<CasoPasta> {};

// Only a folder that holds neither file is new. Elsewhere nothing is made: a database that
// went missing stays missing, and the settings that are there stay byte for byte.
TEST_P(PastaDados, SoAPastaNovaRecebeOsArquivosEntregues) {
    const CasoPasta c = GetParam();
    QTemporaryDir pasta;
    {
        Sessao antes(pasta.path());
        prepara_pasta_dados(antes);
        LeGravaIni(antes.CaminhoIni, "Sistema", "port", "COM1");
        LeGravaIni(antes.CaminhoIni, "Config", "FirstTime", "*%*");
    }
    const QString ini = pasta.filePath("VEXA.INI"), base = pasta.filePath("VEXA.db");
    if (!c.temIni) QFile::remove(ini);
    if (!c.temBase) QFile::remove(base);
    const QByteArray iniAntes = bytes_de(ini), baseAntes = bytes_de(base);

    Sessao s(pasta.path());
    prepara_pasta_dados(s);
    EXPECT_EQ(QFile::exists(base), c.baseDepois);
    EXPECT_EQ(LeGravaIni(ini, "Config", "FirstTime", "").toStdString(), c.firstTime);
    if (c.temIni) {
        EXPECT_EQ(bytes_de(ini), iniAntes);
    }
    if (c.temBase) {
        EXPECT_EQ(bytes_de(base), baseAntes);
    }
    if (c.baseDepois) {
        DesktopRoteiro d;
        EXPECT_EQ(AbreTabelas(s, d, 1, 1, 1, 1, 1), 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Partidas, PastaDados,
                         ::testing::Values(CasoPasta{"nova", false, false, true, "1"},
                                           CasoPasta{"usada", true, true, true, ""},
                                           CasoPasta{"sem_base", true, false, false, ""},
                                           CasoPasta{"sem_ini", false, true, true, "-2"}),
                         [](const auto &info) { return std::string(info.param.nome); });

// A start after the database went missing: the purge and the screens find none, and none is
// made behind the operator's back.
TEST(PastaDadosUsada, BaseQueSumiuNaoVoltaVazia) {
    QTemporaryDir pasta;
    Sessao s(pasta.path());
    prepara_pasta_dados(s);
    s.Banco.reset();
    ASSERT_TRUE(QFile::remove(pasta.filePath("VEXA.db")));
    Sessao outra(pasta.path());
    prepara_pasta_dados(outra);
    DesktopRoteiro d;
    EXPECT_EQ(AbreTabelas(outra, d, 1, 0, 0, 0), -2);
    EXPECT_FALSE(QFile::exists(pasta.filePath("VEXA.db")));
}

} // namespace

namespace {

struct CasoLugar {
    const char *nome;
    const char *ambiente; // VEXA_DADOS, null when unset
    const char *chave;    // PastaDados in the standard folder's VEXA.INI, null when absent
    QString esperado;     // "P" stands for the standard folder, "~" for the home folder
};

class LugarPastaDados : public ::testing::TestWithParam<CasoLugar> {};

// The environment wins over the key, and the key over the standard folder.
TEST_P(LugarPastaDados, AmbienteChaveOuPadrao) {
    const CasoLugar c = GetParam();
    QTemporaryDir padrao;
    if (c.chave) LeGravaIni(padrao.filePath("VEXA.INI"), "Sistema", "PastaDados", c.chave);
    c.ambiente ? qputenv("VEXA_DADOS", c.ambiente) : qunsetenv("VEXA_DADOS");
    QString esperado = c.esperado;
    if (esperado.startsWith('P')) esperado.replace(0, 1, padrao.path());
    if (esperado.startsWith('~')) esperado.replace(0, 1, QDir::homePath());
    EXPECT_EQ(escolhe_pasta_dados(padrao.path()), QDir::cleanPath(esperado));
    qunsetenv("VEXA_DADOS");
}

INSTANTIATE_TEST_SUITE_P(
    Escolhas, LugarPastaDados,
    ::testing::Values(CasoLugar{"padrao", nullptr, nullptr, "P"},
                      CasoLugar{"relativa", nullptr, "../outra", "P/../outra"},
                      CasoLugar{"na_casa", nullptr, "~/Sincronizada/Vexa", "~/Sincronizada/Vexa"},
                      CasoLugar{"ambiente_vence", "/srv/vexa/", "/mnt/disco2", "/srv/vexa"}),
    [](const auto &info) { return std::string(info.param.nome); });

// A folder that can't be made (a file stands in its way) is told, not replaced.
TEST(LugarPastaDadosInvalida, DizQueNaoPodeSerUsada) {
    QTemporaryDir d;
    QFile(d.filePath("arquivo")).open(QIODevice::WriteOnly);
    EXPECT_TRUE(verifica_pasta_dados(d.path()).isEmpty());
    EXPECT_TRUE(verifica_pasta_dados(d.filePath("arquivo/dados"))
                    .startsWith("A pasta de dados \"" + d.filePath("arquivo/dados") +
                                "\" não pode ser usada"));
}

} // namespace
