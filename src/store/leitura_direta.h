#pragma once
// A select read straight from SQLite over the program's Qt connection: each cell comes from
// its UTF-8 text into a QString, with no QVariant between. For the reads of a whole register,
// where those conversions were most of the time. On a server's connection the same reads go
// through Qt's query instead.
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariantList>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace vexa {

// The SQLite connection under a Qt connection; null when it isn't one of SQLite's.
sqlite3 *conexao_sqlite(const QSqlDatabase &db);

class LeituraDireta {
  public:
    // Prepares sql and binds valores in order; nothing is read yet.
    LeituraDireta(const QSqlDatabase &db, const QString &sql, const QVariantList &valores = {});
    ~LeituraDireta();
    LeituraDireta(const LeituraDireta &) = delete;
    LeituraDireta &operator=(const LeituraDireta &) = delete;

    // The next row; false at the end and on an error (then Falhou()).
    bool Proxima();
    bool Falhou() const { return falhou_; }

    qint64 Inteiro(int coluna) const;
    // The cell as text, as the select gives it: numbers in their shortest form, null empty.
    QString Texto(int coluna) const;

  private:
    bool le_do_servidor(const QSqlDatabase &db, const QString &sql, const QVariantList &valores);

    sqlite3_stmt *stmt_ = nullptr;
    // On the server: the result read straight from its client library, or Qt's query when
    // that library's calls aren't at hand or the connection is busy.
    void *resultado_ = nullptr;
    int linha_ = -1, linhas_ = 0;
    std::unique_ptr<QSqlQuery> consulta_;
    bool falhou_ = false;
};

} // namespace vexa
