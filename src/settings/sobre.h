#pragma once
// "Sobre": the product, its version and build date, its maker, and the data folder in use.
// Opened in the first seconds of a run it is the start's waiting card: no button, and the entry
// screen's timer closes it.
#include "core/tela.h"

namespace vexa {

class Sobre : public Tela {
  public:
    Sobre(Sessao &sessao, Desktop &desktop);

    Rotulo Label2;
    Rotulo Label3{"TOLVANE S/A."};
    Rotulo Label4{"Impressora de Cheques - Vexa Plus"};
    Rotulo Label1;
    Rotulo Label5; // the data folder
    Botao Command3D1{"&OK"};

    void Form_Load() override;
};

} // namespace vexa
