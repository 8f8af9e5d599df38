#pragma once
// The front of a cheque: printed whole by the printer from the bank's layout, and registered
// in Log only after the printer said it printed.
namespace vexa {

class Main;

// Valido: the result of ValidaCheque; an invalid cheque isn't printed.
void ImprimeFrente(Main &Tela, bool Valido);

// The row of Log for the cheque on the screen, as the fields stand.
void GravaCheque(Main &Tela);

} // namespace vexa
