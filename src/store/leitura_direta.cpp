#include "store/leitura_direta.h"
#include "store/motor.h"

#include <QLocale>
#include <QSqlDriver>
#include <QSqlError>
#include <dlfcn.h>
#include <sqlite3.h>

namespace vexa {

sqlite3 *conexao_sqlite(const QSqlDatabase &db) {
    if (!db.isValid() || !db.driver()) return nullptr;
    const QVariant h = db.driver()->handle();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3 *const *>(h.data());
}

namespace {

// The calls of the server's client library that a read needs. The library is in the process
// already, loaded by Qt's driver; without it the read goes through Qt's query.
struct ClienteServidor {
    using Exec = void *(*)(void *, const char *, int, const unsigned *, const char *const *,
                           const int *, const int *, int);
    Exec exec = nullptr;
    int (*estado)(const void *) = nullptr;
    int (*linhas)(const void *) = nullptr;
    char *(*valor)(const void *, int, int) = nullptr;
    int (*tamanho)(const void *, int, int) = nullptr;
    int (*nulo)(const void *, int, int) = nullptr;
    void (*libera)(void *) = nullptr;
    bool ok() const { return exec && estado && linhas && valor && tamanho && nulo && libera; }
};

const ClienteServidor &cliente_servidor() {
    static const ClienteServidor c = [] {
        ClienteServidor c;
        const auto f = [](const char *nome) { return dlsym(RTLD_DEFAULT, nome); };
        c.exec = reinterpret_cast<ClienteServidor::Exec>(f("PQexecParams"));
        c.estado = reinterpret_cast<int (*)(const void *)>(f("PQresultStatus"));
        c.linhas = reinterpret_cast<int (*)(const void *)>(f("PQntuples"));
        c.valor = reinterpret_cast<char *(*)(const void *, int, int)>(f("PQgetvalue"));
        c.tamanho = reinterpret_cast<int (*)(const void *, int, int)>(f("PQgetlength"));
        c.nulo = reinterpret_cast<int (*)(const void *, int, int)>(f("PQgetisnull"));
        c.libera = reinterpret_cast<void (*)(void *)>(f("PQclear"));
        return c;
    }();
    return c;
}

// The "?" of a statement as the server numbers its parameters, outside quotes.
QByteArray numera_parametros(const QString &sql) {
    QString r;
    int n = 0;
    QChar aspas;
    for (const QChar c : sql) {
        if (!aspas.isNull()) {
            if (c == aspas) aspas = QChar();
        } else if (c == u'\'' || c == u'"') {
            aspas = c;
        } else if (c == u'?') {
            r += u'$' + QString::number(++n);
            continue;
        }
        r += c;
    }
    return r.toUtf8();
}

int liga(sqlite3_stmt *stmt, int i, const QVariant &v) {
    if (v.isNull()) return sqlite3_bind_null(stmt, i);
    switch (v.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return sqlite3_bind_int64(stmt, i, v.toLongLong());
    case QMetaType::Double:
        return sqlite3_bind_double(stmt, i, v.toDouble());
    case QMetaType::QByteArray: {
        const QByteArray b = v.toByteArray();
        return sqlite3_bind_blob64(stmt, i, b.constData(), sqlite3_uint64(b.size()),
                                   SQLITE_TRANSIENT);
    }
    default: {
        const QByteArray t = v.toString().toUtf8();
        return sqlite3_bind_text64(stmt, i, t.constData(), sqlite3_uint64(t.size()),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    }
}
} // namespace

LeituraDireta::LeituraDireta(const QSqlDatabase &db, const QString &sql,
                             const QVariantList &valores) {
    sqlite3 *conexao = conexao_sqlite(db);
    if (!conexao && eh_postgres(db) && le_do_servidor(db, sql, valores)) return;
    if (!conexao && eh_postgres(db)) {
        // Qt's driver reads a forward-only select of the server row by row, one message each;
        // a whole register comes faster in one result.
        consulta_ = std::make_unique<QSqlQuery>(db);
        falhou_ = !executa(*consulta_, sql, valores);
        return;
    }
    const QByteArray texto = sql.toUtf8();
    if (!conexao || sqlite3_prepare_v2(conexao, texto.constData(), int(texto.size()), &stmt_,
                                       nullptr) != SQLITE_OK) {
        falhou_ = true;
        return;
    }
    for (int i = 0; i < valores.size(); ++i)
        if (liga(stmt_, i + 1, valores[i]) != SQLITE_OK) falhou_ = true;
}

bool LeituraDireta::le_do_servidor(const QSqlDatabase &db, const QString &sql,
                                   const QVariantList &valores) {
    const ClienteServidor &c = cliente_servidor();
    const QVariant h = db.driver() ? db.driver()->handle() : QVariant();
    if (!c.ok() || !h.isValid() || qstrcmp(h.typeName(), "PGconn*") != 0) return false;
    void *conexao = *static_cast<void *const *>(h.data());
    QList<QByteArray> textos;
    QList<const char *> ponteiros;
    for (const QVariant &v : valores)
        textos << v.toString().toUtf8();
    for (qsizetype i = 0; i < valores.size(); ++i)
        ponteiros << (valores[i].isNull() ? nullptr : textos[i].constData());
    void *r = c.exec(conexao, numera_parametros(dialeto(db, sql)).constData(),
                     int(ponteiros.size()), nullptr, ponteiros.constData(), nullptr, nullptr, 0);
    constexpr int LinhasLidas = 2;
    if (!r || c.estado(r) != LinhasLidas) {
        if (r) c.libera(r);
        return false;
    }
    resultado_ = r;
    linhas_ = c.linhas(r);
    return true;
}

LeituraDireta::~LeituraDireta() {
    sqlite3_finalize(stmt_);
    if (resultado_) cliente_servidor().libera(resultado_);
}

bool LeituraDireta::Proxima() {
    if (resultado_) return ++linha_ < linhas_;
    if (consulta_) {
        if (falhou_) return false;
        if (consulta_->next()) return true;
        falhou_ = consulta_->lastError().type() != QSqlError::NoError;
        return false;
    }
    if (falhou_ || !stmt_) return false;
    const int r = sqlite3_step(stmt_);
    if (r == SQLITE_ROW) return true;
    if (r != SQLITE_DONE) falhou_ = true;
    return false;
}

qint64 LeituraDireta::Inteiro(int coluna) const {
    if (resultado_)
        return QByteArray(cliente_servidor().valor(resultado_, linha_, coluna)).toLongLong();
    if (consulta_) return consulta_->value(coluna).toLongLong();
    return sqlite3_column_int64(stmt_, coluna);
}

QString LeituraDireta::Texto(int coluna) const {
    if (resultado_) {
        const ClienteServidor &c = cliente_servidor();
        if (c.nulo(resultado_, linha_, coluna)) return QString();
        return QString::fromUtf8(c.valor(resultado_, linha_, coluna),
                                 c.tamanho(resultado_, linha_, coluna));
    }
    if (consulta_) {
        const QVariant v = consulta_->value(coluna);
        if (v.typeId() == QMetaType::Double)
            return QString::number(v.toDouble(), 'g', QLocale::FloatingPointShortest);
        return v.toString();
    }
    switch (sqlite3_column_type(stmt_, coluna)) {
    case SQLITE_NULL:
        return QString();
    case SQLITE_FLOAT:
        return QString::number(sqlite3_column_double(stmt_, coluna), 'g',
                               QLocale::FloatingPointShortest);
    default: {
        const auto *p = reinterpret_cast<const char *>(sqlite3_column_text(stmt_, coluna));
        return QString::fromUtf8(p, sqlite3_column_bytes(stmt_, coluna));
    }
    }
}

} // namespace vexa
