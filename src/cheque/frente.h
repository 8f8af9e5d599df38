#pragma once
// The front of a cheque: printed whole by the printer from the bank's layout, and registered
// in Log. A cheque to be registered is written as pending before the printer is called and
// becomes its row of Log after the printer said it printed, so that no printed cheque leaves
// the register unnoticed; one left pending by a run cut short is asked about at the next start.
#include "printer/impressao.h"
#include "store/registro_cheques.h"

#include <QString>
#include <optional>

namespace vexa {

class Desktop;
class Main;
struct Sessao;

// A cheque as the questions and the status line name it: "Cheque 000123 — R$ 1.234,50 —
// Maria" (a cheque without a number says so; an empty payee is left out).
QString descreve_cheque(const QString &Numero, const QString &Valor, const QString &Favorecido);
// An instalment as its question names it: "Parcela 2 de 3 — cheque 000125 — R$ 333,33".
QString descreve_parcela(int Parcela, int Total, const QString &Numero, const QString &Valor);
// What became of one cheque sent by imprime_e_registra.
struct Desfecho {
    std::optional<qint16> Resultado; // the printer's; none when nothing reached it
    bool Registrado = false;
    QString Index; // the row of Log it became, when registered
    // The operator said the cheque came out wrong on paper: its row is a cancelled one.
    bool Cancelado = false;
    bool Impresso() const { return Resultado == 1; }
};

// What became of a print, for the status line: "Cheque 000123 de R$ 1.234,50 impresso e
// registrado.", "... impresso e NÃO registrado." or "... não foi impresso."; one that came out
// wrong: "... saiu errado e foi registrado como cancelado."
QString situacao_cheque(const QString &Numero, const QString &Valor, const Desfecho &desfecho);

// One cheque through the register and the printer. With Registra the cheque is first written
// as pending; a register that can't take it is told (why, and that the box lets it print
// unregistered), and nothing is printed. After the print the pending row becomes the row of
// Log, or is dropped when the printer refused the cheque. A cheque the operator says came out
// wrong on a system printer becomes a cancelled row with its note. TestaPorta as
// imprime_um_cheque.
Desfecho imprime_e_registra(Sessao &s, Desktop &d, Medidor *Gauge, const TextosCheque &Textos,
                            const ChequeImpresso &Cheque, bool Registra, bool TestaPorta = false);

// The cheques left pending by a run cut short between a print and its register, each asked
// about: Sim registers it in Log, Não drops it.
void confere_pendentes(Sessao &s, Desktop &d);

// A number already in the register for the bank stops a print: the question names the earlier
// cheque, and "Não", its default, keeps the cheque from printing. Reimpresso: the Index of the
// row being reprinted, which is no duplicate of itself. True when the cheque may print.
bool confere_duplicado(Sessao &s, Desktop &d, const QString &Banco, const QString &Numero,
                       const QString &Reimpresso = QString(), const QString &Parcela = QString());

// Valido: the result of ValidaCheque; an invalid cheque isn't printed. The report box of the
// screen decides whether the cheque is registered.
void ImprimeFrente(Main &Tela, bool Valido);

// The row of Log for the cheque on the screen, as the fields stand.
void GravaCheque(Main &Tela);

} // namespace vexa
