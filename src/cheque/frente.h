#pragma once
// The front of a cheque: printed whole by the printer from the bank's layout, and registered
// in Log only after the printer said it printed.
#include <QString>
#include <QStringList>

namespace vexa {

class Desktop;
class Main;
struct Sessao;

// A printed cheque as its screen shows it, for its row of Log.
struct ChequeImpresso {
    QString Banco, Valor, Favorecido, Cidade, Data, Numero;
    // The three comment lines; an instalment has none.
    QStringList Comentarios{QString(), QString(), QString()};
    // An instalment of a post-dated run: without a number its NRCH is "SEQ:" and the row's
    // Codigo (a single cheque's is one blank), so that the instalments of one run can be told
    // apart in the register; and its Index goes on from the last row of Log.
    bool Parcela = false;
    // Not empty for a cheque that came out wrong on paper: its row is cancelled with this note.
    QString Nota = QString();
};

// Adds the row of a printed cheque to Log under the next Index: the amount in the register's
// form ("1234,5"), StCancel one blank, the other fields as shown. -2 when the register can't be
// opened (nothing is written or said: the cheque has printed); 1 when the row was saved; 0 when
// it wasn't, after telling the operator, since the cheque is on paper.
int registra_cheque(Sessao &s, Desktop &d, const ChequeImpresso &Cheque);

// Valido: the result of ValidaCheque; an invalid cheque isn't printed.
void ImprimeFrente(Main &Tela, bool Valido);

// The row of Log for the cheque on the screen, as the fields stand.
void GravaCheque(Main &Tela, const QString &Nota = QString());

} // namespace vexa
