#include "settings/copias.h"

#include <QDir>

namespace vexa {

Copias::Copias(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Copias, "Restaurar cópia de segurança", sessao, desktop) {
    registra("Label1", Label1);
    registra("List1", List1);
    registra("Command1", Command1);
    liga("Command1", Evento::Click, [this](int i) { Command1_Click(i); });
    liga("List1", Evento::DblClick, [this](int) { Command1_Click(0); });
}

void Copias::Form_Load() {
    copias_ = lista_copias(sessao);
    const QString pasta = QDir::toNativeSeparators(pasta_copias(sessao));
    if (copias_.isEmpty()) {
        desktop.MsgBox(QStringLiteral("Não há cópias de segurança em \"%1\".").arg(pasta),
                       Botoes::OK, Caption, Icone::Informacao);
        sessao.FechaTela = 1;
        return;
    }
    Label1.Caption = QStringLiteral("Cópias guardadas em \"%1\":").arg(pasta);
    List1.Clear();
    for (const CopiaSeguranca &c : copias_)
        List1.AddItem(c.Descricao());
    List1.ListIndex = 0;
}

void Copias::Command1_Click(int Index) {
    if (Index == 1) return Unload();
    if (List1.ListIndex < 0 || List1.ListIndex >= copias_.size()) {
        desktop.MsgBox("Escolha na lista a cópia que volta.", Botoes::OK, Caption,
                       Icone::Exclamacao);
        return;
    }
    if (restaura_copia(sessao, desktop, copias_[List1.ListIndex])) desktop.Encerra(0);
}

} // namespace vexa
