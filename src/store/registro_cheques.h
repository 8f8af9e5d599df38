#pragma once
// The register of issued cheques seen from the print. A cheque to be registered is written as
// pending before it goes to the printer, and becomes its row of Log after the printer said it
// printed, in one transaction: a program stopped between the print and the register leaves the
// pending row, and the next start asks the operator about it. A printed cheque is never left
// without its row in silence.
#include "core/sessao.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace vexa {

// A cheque as its screen shows it, for its row of Log.
struct ChequeImpresso {
    QString Banco, Valor, Favorecido, Cidade, Data, Numero;
    // The three comment lines; an instalment has none.
    QStringList Comentarios{QString(), QString(), QString()};
    // An instalment of a post-dated run: without a number its NRCH is "SEQ:" and the row's
    // Codigo (a single cheque's is one blank), so that the instalments of one run can be told
    // apart in the register; and its Index goes on from the last row of Log.
    bool Parcela = false;
    // Not empty for a cheque that came out wrong on paper: its row is cancelled (StCancel "C")
    // with this note in the first empty comment line, or ahead of the third when all are full.
    QString Nota = QString();
};

// Whether the register took a write, and if not, why.
enum class EstadoRegistro {
    Gravado,
    Ausente,     // there is no database file
    Travado,     // another program holds the database
    SemGravacao, // the file or the disk refuses writes
    Danificado,  // the file is no database of the program, or is damaged
};

// The cheque written as pending; Id receives its row's number.
EstadoRegistro grava_pendente(Sessao &s, const ChequeImpresso &Cheque, qint64 &Id);
// The pending cheque becomes its row of Log under the next Index, in one transaction: the
// pending row removed and the Log row added; a Nota makes it a cancelled row (see
// ChequeImpresso). False when the database refused (the pending row then stays, to be asked
// about at the next start). Index receives the row's Index.
bool registra_pendente(Sessao &s, qint64 Id, const QString &Nota = QString(),
                       QString *Index = nullptr);
// Drops a pending cheque: the printer refused it, or the operator said it wasn't printed.
bool descarta_pendente(Sessao &s, qint64 Id);

struct ChequePendente {
    qint64 Id = 0;
    ChequeImpresso Cheque;
};
// The pending cheques in the order they were written; none when the database can't be read.
QList<ChequePendente> cheques_pendentes(Sessao &s);

// Adds the row of a cheque to Log under the next Index, without passing through the pending
// table. Gravado, or why not.
EstadoRegistro registra_cheque(Sessao &s, const ChequeImpresso &Cheque);

} // namespace vexa
