#include "settings/sobre.h"

namespace vexa {

Sobre::Sobre(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Sobre, "Sobre o Software Vexa Plus", sessao, desktop) {
    registra("Label2", Label2);
    registra("Label3", Label3);
    registra("Label4", Label4);
    registra("Label1", Label1);
    registra("Command3D1", Command3D1);
    liga("Command3D1", Evento::Click, [this](int) { Unload(); });
}

void Sobre::Form_Load() {
    Label1.Caption = QString(6, u' ') + "Software de Impressão de Cheques\n" + QString(6, u' ') +
                     "Versão 5.5 - Out/99";
    Command3D1.Visible = true;
    if (sessao.FaseInicio == 1) {
        Command3D1.Visible = false;
        Caption = "   Aguarde um instante...";
        desktop.Mostra(*this);
    }
}

} // namespace vexa
