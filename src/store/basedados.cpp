#include "store/basedados.h"

#include "core/conversoes.h"

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QUuid>
#include <sqlite3.h>

namespace vexa {

QString NomeTabela(int tabela) {
    switch (tabela) {
    case TabFavorecido:
        return "Favorecido";
    case TabCidade:
        return "Cidade";
    case TabBancos:
        return "Bancos";
    case TabLog:
        return "Log";
    case TabTransferencia:
        return "Transferencia";
    case TabScript:
        return "Script";
    }
    return {};
}

QString chave_texto(const QString &texto) {
    QString chave;
    for (const QChar c : texto.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing) chave.append(c);
    return chave.toCaseFolded();
}

QString literal_sql(const QString &texto) {
    return "'" + QString(texto).replace('\'', "''") + "'";
}

namespace {

QString texto_arg(sqlite3_value *v) {
    const auto *p = reinterpret_cast<const char *>(sqlite3_value_text(v));
    return p ? QString::fromUtf8(p) : QString();
}

int colacao_texto(void *, int n1, const void *a, int n2, const void *b) {
    const QString x = chave_texto(QString::fromUtf8(static_cast<const char *>(a), n1));
    const QString y = chave_texto(QString::fromUtf8(static_cast<const char *>(b), n2));
    return x.compare(y);
}

void sql_cdbl(sqlite3_context *ctx, int, sqlite3_value **argv) {
    sqlite3_result_double(ctx, valor_numerico(texto_arg(argv[0])));
}

void sql_cvdate(sqlite3_context *ctx, int, sqlite3_value **argv) {
    const auto data = le_data(texto_arg(argv[0]).trimmed());
    if (!data) return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, data->toJulianDay());
}

} // namespace

void RegistraFuncoesSql(const QSqlDatabase &db) {
    const QVariant h = db.driver()->handle();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0) return;
    sqlite3 *s = *static_cast<sqlite3 *const *>(h.data());
    if (!s) return;
    const int f = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_function(s, "CDBL", 1, f, nullptr, sql_cdbl, nullptr, nullptr);
    sqlite3_create_function(s, "CVDate", 1, f, nullptr, sql_cvdate, nullptr, nullptr);
    sqlite3_create_collation(s, "TEXTO", SQLITE_UTF8, nullptr, colacao_texto);
}

BaseDados::BaseDados(const QString &caminho)
    : caminho_(caminho), conexao_("vexa-" + QUuid::createUuid().toString(QUuid::WithoutBraces)) {}

BaseDados::~BaseDados() {
    conjuntos_.clear();
    if (QSqlDatabase::contains(conexao_)) {
        QSqlDatabase::database(conexao_, false).close();
        QSqlDatabase::removeDatabase(conexao_);
    }
}

bool BaseDados::Aberta() const {
    return QSqlDatabase::contains(conexao_) && QSqlDatabase::database(conexao_, false).isOpen();
}

QSqlDatabase BaseDados::db() const {
    return QSqlDatabase::database(conexao_, false);
}

bool BaseDados::Abre() {
    if (Aberta()) return true;
    // SQLite would make an empty file where none is: a missing database is an error here.
    if (!QFileInfo(caminho_).isFile()) return false;
    QSqlDatabase db = QSqlDatabase::contains(conexao_)
                          ? QSqlDatabase::database(conexao_, false)
                          : QSqlDatabase::addDatabase("QSQLITE", conexao_);
    db.setDatabaseName(caminho_);
    db.setConnectOptions("QSQLITE_BUSY_TIMEOUT=3000");
    if (!db.open()) return false;
    QSqlQuery q(db);
    if (!q.exec("SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                "('Bancos','Transferencia','Script','Favorecido','Cidade','Log')") ||
        !q.next() || q.value(0).toInt() != 6) {
        db.close();
        return false;
    }
    RegistraFuncoesSql(db);
    return true;
}

RecordSet &BaseDados::Conjunto(int tabela) {
    return conjuntos_[tabela];
}

} // namespace vexa
