#include "settings/sobre.h"

#include "settings/versao.h"

#include <QDir>

namespace vexa {

Sobre::Sobre(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Sobre, "Sobre o Software Vexa Plus", sessao, desktop) {
    registra("Label2", Label2);
    registra("Label3", Label3);
    registra("Label4", Label4);
    registra("Label1", Label1);
    registra("Label5", Label5);
    registra("Command3D1", Command3D1);
    liga("Command3D1", Evento::Click, [this](int) { Unload(); });
}

void Sobre::Form_Load() {
    Label2.Caption = "Vexa Plus Document Printer versão " + VersaoPrograma();
    Label1.Caption = QString(6, u' ') + "Software de Impressão de Cheques\n" + QString(6, u' ') +
                     "Versão " + VersaoPrograma() + " - " + DataCompilacao();
    Label5.Caption = "Pasta de dados:\n" + QDir::toNativeSeparators(sessao.CaminhoApp);
    Command3D1.Visible = true;
    if (sessao.FaseInicio == 1) {
        Command3D1.Visible = false;
        Caption = "   Aguarde um instante...";
        desktop.Mostra(*this);
    }
}

} // namespace vexa
