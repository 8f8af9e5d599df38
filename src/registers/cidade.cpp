#include "registers/cidade.h"

#include "store/basedados.h"

namespace vexa {

Cidade::Cidade(Sessao &sessao, Desktop &desktop)
    : CadastroSimples(telas::Cidade, "Cadastro de Cidades", sessao, desktop, TabCidade,
                      "Cidade:", 20, "Selecione uma Cidade...") {
    registra_cadastro("Imprime", Imprime);
}

} // namespace vexa
