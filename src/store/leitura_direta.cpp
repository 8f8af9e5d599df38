#include "store/leitura_direta.h"
#include "store/motor.h"

#include <QLocale>
#include <QSqlDriver>
#include <QSqlError>
#include <sqlite3.h>

namespace vexa {

sqlite3 *conexao_sqlite(const QSqlDatabase &db) {
    if (!db.isValid() || !db.driver()) return nullptr;
    const QVariant h = db.driver()->handle();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3 *const *>(h.data());
}

namespace {
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
    if (!conexao && eh_postgres(db)) {
        consulta_ = std::make_unique<QSqlQuery>(db);
        consulta_->setForwardOnly(true);
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

LeituraDireta::~LeituraDireta() {
    sqlite3_finalize(stmt_);
}

bool LeituraDireta::Proxima() {
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
    if (consulta_) return consulta_->value(coluna).toLongLong();
    return sqlite3_column_int64(stmt_, coluna);
}

QString LeituraDireta::Texto(int coluna) const {
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
