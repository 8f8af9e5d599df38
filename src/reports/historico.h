#pragma once
// "Histórico do Cheque": every change the register saw on one cheque, oldest first: when, who,
// on which machine, what was done, and the row as it stood before.
#include "core/tela.h"
#include "store/historico.h"

namespace vexa {

// An entry as a line: "05/03/2024 14:02:11  Cancelamento  ana (caixa-1)  —  antes: nº 000123,
// R$ 1.234,50, Maria, 05/03/24, válido".
QString linha_historico(const EntradaHistorico &Entrada);

class HistoricoCheque : public Tela {
  public:
    HistoricoCheque(Sessao &sessao, Desktop &desktop);

    Rotulo Label1; // the cheque
    Lista List1;   // its entries
    Botao Command1{"&Fechar"};

    // Shows the history of the cheque of that Index of Log.
    void Mostra(const QString &Index);
};

} // namespace vexa
