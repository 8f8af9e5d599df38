#include "core/desktop_roteiro.h"
#include "core/ini.h"
#include "store/pasta_dados.h"
#include "store/tabelas.h"

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
