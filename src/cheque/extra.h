#pragma once
// "Programa Campo": the line and column on the cheque of each of the three extra fields.
#include "core/tela.h"

#include <map>

namespace vexa {

class CmpExtra : public Tela {
  public:
    CmpExtra(Sessao &sessao, Desktop &desktop);

    Matriz<Botao> CmdNumCampo{"Campo &1", "Campo &2", "Campo &3"};
    Matriz<Texto> PosText{"Linha:", "Coluna:"};
    std::map<int, Botao> BtnCmd{{0, Botao("&Salvar")}, {2, Botao("&Fechar")}};

    // The stored positions; entries 0 to 2 are in use, 0 where none is stored.
    int LinhaCampo[5] = {};
    int ColunaCampo[5] = {};
    // The chosen field, -1 while none is.
    int Escolhido = -1;

    void Form_Load() override;
    void CmdNumCampo_Click(int Index);
    void PosText_Change(int Index);
    void BtnCmd_Click(int Index);
};

} // namespace vexa
