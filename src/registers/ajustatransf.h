#pragma once
// "Ajuste Gráfico para Cheque Transferência": the transfer layout on the transfer register,
// handed over in Sessao's AjusteL and AjusteC (L1..L7, C1..C7), as seven boxes placed by
// their own line and column. The date keeps to the city's line and the account to the
// branch's; OK copies the numbers back into the register's fields.
#include "registers/ajusta.h"

namespace vexa {

class BancTrans;

class AjustaChequeTransferencia : public AjusteGrafico {
  public:
    AjustaChequeTransferencia(Sessao &sessao, Desktop &desktop);

    void Form_Load() override;
    void AtualizaRotulos() override;
    void Command3D1_Click(int Index);

    int rotulo_linha(int Indice) const override { return Indice; }
    int rotulo_coluna(int Indice) const override { return 7 + Indice; }

  protected:
    bool fixa_na_vertical(int) const override { return false; }
    void acompanha() override;

  private:
    BancTrans *banctrans() const;
};

} // namespace vexa
