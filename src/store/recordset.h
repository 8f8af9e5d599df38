#pragma once
// A record set over one table: the keys of the rows a select found, in its order, with the
// rows read in blocks when the cursor or a list reaches them. The screens walk it, read its
// fields and edit it as they would a dynaset: every field is text, field names are compared
// without case.
//
// A row deleted through the set stays in its keys and is skipped by every move; a row added
// joins the end of the set. Writes go straight to the table, one statement each, so a
// process killed between two of them leaves every row whole.
#include <QHash>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVector>
#include <map>
#include <memory>

namespace vexa {

// Columns the store keeps beside a table's own fields, written by the database itself: the
// name folded for search and order, and the cheque's date in an order that sorts. Record sets
// neither show nor write them.
inline constexpr const char *ColunaNomeChave = "NomeChave";
inline constexpr const char *ColunaDataChave = "DataChave";

class RecordSet {
  public:
    RecordSet() = default;
    RecordSet(RecordSet &&) = default;
    RecordSet &operator=(RecordSet &&) = default;

    // Runs a select of the form "Select * From <table> [Where ...] [Order by ...]" on db; without
    // an order the rows come in the order of the first field, the table's key.
    // Operator text goes in valores, bound to the "?" of the select. False (and the set
    // closed) when the statement fails.
    bool Abre(const QSqlDatabase &db, const QString &sql, const QVariantList &valores = {});
    // Runs the same select again: rows added or deleted by anyone since then show.
    bool Requery();
    void Close();
    bool Aberto() const { return aberto_; }
    QString Tabela() const { return tabela_; }
    QString Sql() const { return sql_; }
    QVariantList Valores() const { return valores_; }
    QSqlDatabase Base() const { return db_; }
    // A set of its own over the same select, as the rows stand now: a list keeps it while the
    // shared set is filtered again. While nothing was written to the database since this set's
    // select, the copy shares the rows already read instead of selecting them again.
    RecordSet Copia() const;

    // --- walking
    int RecordCount() const { return int(chaves_.size()) - apagados_; }
    // Before the first row / past the last one (always both on an empty set).
    bool Bof() const { return pos_ < 0 || RecordCount() == 0; }
    bool Eof() const { return pos_ >= int(chaves_.size()) || RecordCount() == 0; }
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();

    // A field of the current row; empty outside the rows or for an unknown name.
    QString Campo(const QString &nome) const;
    QString operator[](const QString &nome) const { return Campo(nome); }
    QStringList Campos() const { return campos_; }

    // For lists over the set: the fields of the row at position i (0 to RecordCount() - 1, rows
    // deleted through the set left out), in the order of Campos(), without moving the cursor.
    // Empty outside the rows.
    QStringList Linha(int i) const;
    // The position of a field in Campos() and in Linha(); -1 for an unknown name.
    int Coluna(const QString &nome) const;
    // A few fields of every row of the select, in its order, in one pass (a total over a whole
    // register reads only what it sums).
    QList<QStringList> Colunas(const QStringList &nomes) const;

    // --- editing: AddNew or Edit, then Define the fields, then Update.
    void AddNew();
    void Edit();
    void Define(const QString &campo, const QString &valor);
    // Writes the new or edited row. False when the database refused it (UltimoErro() tells
    // why); the row stays in the edit buffer.
    bool Update();
    void CancelUpdate();
    // Deletes the current row. False when there is none or the database refused.
    bool Delete();
    // The database's error of the last write that failed.
    QSqlError UltimoErro() const { return erro_; }

  private:
    bool le_chaves();
    const QStringList *linha_na(int posicao) const;
    void esquece_blocos() const;
    void pula_apagados(int passo);

    QSqlDatabase db_;
    QString sql_, tabela_, sqlChaves_, resto_;
    QVariantList valores_;
    bool aberto_ = false;

    // The database's count of changes at the select: this connection's and other processes'.
    QPair<qint64, qint64> versao_{-1, -1};

    QVector<qint64> chaves_; // rowids, in the select's order
    QVector<bool> apagado_;  // deleted through this set
    int apagados_ = 0;
    int pos_ = -1;
    QStringList campos_;

    // Rows read in blocks of consecutive positions, through one prepared statement; a few
    // blocks are kept, so that a list painting around one place reads each block once.
    struct Bloco {
        QVector<QStringList> linhas;
        quint64 uso = 0;
    };
    mutable std::map<int, Bloco> blocos_;
    mutable quint64 usos_ = 0;
    mutable std::unique_ptr<QSqlQuery> leitura_;

    enum class Modo { Nada, Novo, Editando } modo_ = Modo::Nada;
    QStringList buffer_;
    QSqlError erro_;
};

} // namespace vexa
