#pragma once
// "Cadastro de Cidades": the cities the entry screens offer by code.
#include "registers/cadastro.h"

namespace vexa {

class Cidade : public CadastroSimples {
  public:
    Cidade(Sessao &sessao, Desktop &desktop);

    Botao Imprime{"Im&primir"};

  protected:
    PedidoLista pedido_lista() const override { return {"Cidade", 0, " Cidades Cadastradas"}; }
};

} // namespace vexa
