#pragma once
// The history of the register: every change to a row of Log (a cancel, a delete, a reprint, the
// purge, a spoiled leaf) leaves an entry in Historico with when, who, on which machine, what was
// done and the row as it stood before. The program only ever adds to that table; the database
// itself refuses to change or delete an entry.
//
// Deletes and changes of Log are recorded by the connection's own triggers, whatever screen or
// record set made them; what changes no row (a reprint) is written by grava_historico.
#include "core/sessao.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QSqlDatabase>
#include <QString>

namespace vexa {

// The fields of Log that an entry keeps, in their order.
const QStringList &campos_historico();

// The functions and triggers by which a connection records its changes of Log.
void prepara_historico(QSqlDatabase &db);

// While one lives, the changes of Log are recorded under this action instead of the one the
// change itself names ("Exclusão", "Cancelamento" or "Alteração").
class AcaoHistorico {
  public:
    explicit AcaoHistorico(const QString &acao);
    ~AcaoHistorico();
    AcaoHistorico(const AcaoHistorico &) = delete;
    AcaoHistorico &operator=(const AcaoHistorico &) = delete;

  private:
    QString anterior_;
};

// Adds an entry for each row of Log of that Index, as it stands. False when the database
// refused.
bool grava_historico(Sessao &s, const QString &Index, const QString &Acao);

struct EntradaHistorico {
    QString Quando, Usuario, Maquina, Acao;
    // The row as it stood before, by the names of Log's fields.
    QMap<QString, QString> Linha;
};
// The entries of a cheque, oldest first; none when the database can't be read.
QList<EntradaHistorico> historico_cheque(Sessao &s, const QString &Index);
// The entries of every cheque, by the Index of each, oldest first.
QHash<QString, QList<EntradaHistorico>> historico_completo(Sessao &s);

} // namespace vexa
