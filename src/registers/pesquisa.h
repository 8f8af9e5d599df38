#pragma once
// The search window: picks a payee, a city or a bank (TipoPesquisa of Sessao) by code or name
// and leaves the pick in ResultadoPesquisa, for the field that gets the focus next.
#include "core/tela.h"

namespace vexa {

// Opens the register of a kind of search: 0 payees, 1 cities, 2 banks.
void abre_registro(Sessao &s, Desktop &d, int Tipo);

class Pesquisa : public Tela {
  public:
    Pesquisa(Sessao &sessao, Desktop &desktop);

    Matriz<Texto> Text1{{0, Texto("Procurar:")}};
    Lista List1;
    Matriz<Botao> Command3D1{"Fecha&r", "&Cancelar", "Ca&dastrar"};

    void Form_Load() override;
    void Form_Unload() override;
    void PreencheListaPesquisa(int Tipo);

    void Text1_Change(int Index);
    void Text1_GotFocus(int Index);
    void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void List1_DblClick();
    void List1_KeyDown(int &KeyCode, int Shift);
    void Command3D1_Click(int Index);

  private:
    void aceita();
};

} // namespace vexa
