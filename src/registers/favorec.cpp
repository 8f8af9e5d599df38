#include "registers/favorec.h"

#include "core/conversoes.h"
#include "printer/impressao.h"
#include "store/basedados.h"

namespace vexa {

Favorec::Favorec(Sessao &sessao, Desktop &desktop)
    : CadastroSimples(telas::Favorec, "Cadastro de Favorecidos", sessao, desktop, TabFavorecido,
                      "Nome:", 74, "Selecione um favorecido...") {
    registra_cadastro("Imprimirfav", Imprimirfav);
}

bool Favorec::pergunta_impressora(int Index) {
    // The printer's answer stops nothing: the register goes on with its own checks.
    const QString codigo = codigo_impressora(Text1[0].Text);
    if (Index == 0 && !Text1[0].Text.isEmpty() && !Text1[1].Text.isEmpty() &&
        desktop.MsgBox("Deseja Incluir na Impressora?", Botoes::YesNo, "Comando Vexa") ==
            Resposta::Yes)
        ComandoImpressora(sessao, desktop, 1,
                          {codigo, ConverteTexto(Text1[1].Text.trimmed()), nullptr});
    if (Index == 2 && !Text1[0].Text.isEmpty() &&
        desktop.MsgBox("Deseja Excluir na Impressora?", Botoes::YesNo, "Comando Vexa") ==
            Resposta::Yes)
        ComandoImpressora(sessao, desktop, 2, {codigo, QString(), nullptr});
    return true;
}

} // namespace vexa
