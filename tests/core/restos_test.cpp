// What writes cut short leave in the data folder, as they leave it, put right at the next start.
#include "core/restos.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <sys/wait.h>
#include <unistd.h>

using namespace vexa;

namespace {

bool executa(const QString &arquivo, const QString &sql) {
    sqlite3 *db = nullptr;
    bool ok = sqlite3_open(QFile::encodeName(arquivo).constData(), &db) == SQLITE_OK &&
              sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    sqlite3_close(db);
    return ok;
}

int linhas(const QString &arquivo) {
    sqlite3 *db = nullptr;
    sqlite3_stmt *q = nullptr;
    int n = -1;
    if (sqlite3_open(QFile::encodeName(arquivo).constData(), &db) == SQLITE_OK &&
        sqlite3_prepare_v2(db, "SELECT count(*) FROM Log", -1, &q, nullptr) == SQLITE_OK &&
        sqlite3_step(q) == SQLITE_ROW)
        n = sqlite3_column_int(q, 0);
    sqlite3_finalize(q);
    sqlite3_close(db);
    return n;
}

void poe(const QString &arquivo) {
    QFile f(arquivo);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("x");
}

TEST(Restos, PurgaMortaVoltaInteiraETemporariosSaem) {
    QTemporaryDir pasta;
    Sessao s(pasta.path());
    const QString base = pasta.filePath("VEXA.db"), expurgo = pasta.filePath("VEXA-expurgo.db");
    ASSERT_TRUE(executa(base, "CREATE TABLE Log (Idx TEXT, Resto TEXT);"
                              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                              "WHERE i < 20000) INSERT INTO Log SELECT i, printf('%.100c', 'x') "
                              "FROM n;"));
    ASSERT_TRUE(executa(expurgo, "CREATE TABLE Log (Idx TEXT, Resto TEXT);"
                                 "INSERT INTO Log VALUES ('0', 'de antes');"));
    // A purge killed halfway through its one transaction: the rows copied aside and deleted,
    // with pages already on the disk (a small cache spills them), and never committed.
    const pid_t filho = ::fork();
    if (filho == 0) {
        const QString sql = "PRAGMA cache_size = 1; ATTACH '" + expurgo +
                            "' AS expurgo; BEGIN; INSERT INTO expurgo.Log SELECT * FROM main.Log;"
                            "DELETE FROM main.Log;";
        sqlite3 *db = nullptr;
        sqlite3_open(QFile::encodeName(base).constData(), &db);
        sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, nullptr);
        ::_exit(0);
    }
    ::waitpid(filho, nullptr, 0);
    ASSERT_TRUE(QFile::exists(base + "-journal"));
    ASSERT_TRUE(QFile::exists(expurgo + "-journal"));

    // Whole-file writes and a database made aside, cut short; and files that only look alike.
    for (const char *nome : {"VEXA.INI.aB3dEf", "ChequeTransf.txt.Qw9rTy", "Extenso.ret.zzzzzz",
                             "VEXA.db.novo", "VEXA.db.novo-journal", "VEXA.INI", "VEXA.INI.bak",
                             "notas.txt.abcdef", "cop2311.26", "orfao.db-journal"})
        poe(pasta.filePath(nome));

    recupera_restos(s);
    EXPECT_EQ(QDir(pasta.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
              (QStringList{"VEXA-expurgo.db", "VEXA.INI", "VEXA.INI.bak", "VEXA.db", "cop2311.26",
                           "notas.txt.abcdef", "orfao.db-journal"}));
    EXPECT_EQ(linhas(base), 20000);
    EXPECT_EQ(linhas(expurgo), 1);
}

} // namespace
