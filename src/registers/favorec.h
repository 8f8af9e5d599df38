#pragma once
// "Cadastro de Favorecidos": the payees the entry screens offer by code. A payee can also go
// to the printer's memory, which keeps it under the last two digits of its code.
#include "registers/cadastro.h"

namespace vexa {

class Favorec : public CadastroSimples {
  public:
    Favorec(Sessao &sessao, Desktop &desktop);

    Botao Imprimirfav{"Im&primir"};

    // The code the printer's memory keeps: the fourth and fifth of the five digits.
    static QString codigo_impressora(const QString &Codigo) { return Codigo.mid(3, 2); }

  protected:
    bool pergunta_impressora(int Index) override;
    PedidoLista pedido_lista() const override { return {"Favorecido", 0, " Favorecidos "}; }
};

} // namespace vexa
