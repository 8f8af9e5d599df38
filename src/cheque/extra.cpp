#include "cheque/extra.h"

#include "core/conversoes.h"
#include "core/grava_ini.h"
#include "core/ini.h"

namespace vexa {

namespace {
QString chave(int campo, const char *eixo) {
    return QStringLiteral("Campo0%1%2").arg(campo).arg(QLatin1String(eixo));
}
} // namespace

CmpExtra::CmpExtra(Sessao &sessao, Desktop &desktop)
    : Tela(telas::CmpExtra, "Programa Campo", sessao, desktop) {
    for (auto &[i, c] : PosText)
        c.MaxLength = 3;
    registra("CmdNumCampo", CmdNumCampo);
    registra("PosText", PosText);
    registra("BtnCmd", BtnCmd);
    liga("CmdNumCampo", Evento::Click, [this](int i) { CmdNumCampo_Click(i); });
    liga("PosText", Evento::Change, [this](int i) { PosText_Change(i); });
    liga("BtnCmd", Evento::Click, [this](int i) { BtnCmd_Click(i); });
}

void CmpExtra::Form_Load() {
    for (int i = 0; i < 3; ++i) {
        const QString linha = LeGravaIni(sessao.CaminhoIni, "FrenteInfo", chave(i, "Lin"), "");
        const QString coluna = LeGravaIni(sessao.CaminhoIni, "FrenteInfo", chave(i, "Col"), "");
        LinhaCampo[i] = linha == "-2" ? 0 : int(Val(linha));
        ColunaCampo[i] = coluna == "-2" ? 0 : int(Val(coluna));
    }
    CmdNumCampo_Click(0);
}

void CmpExtra::CmdNumCampo_Click(int Index) {
    Escolhido = Index;
    for (auto &[i, b] : CmdNumCampo)
        b.Value = i == Index ? 1 : 0;
    const bool guardado = LinhaCampo[Index] != 0 && ColunaCampo[Index] != 0;
    PosText[0].Text = guardado ? QString::number(LinhaCampo[Index]) : QString();
    PosText[1].Text = guardado ? QString::number(ColunaCampo[Index]) : QString();
}

void CmpExtra::PosText_Change(int Index) {
    QString digitos;
    for (const QChar c : PosText[Index].Text)
        if (c >= u'0' && c <= u'9') digitos += c; // not other scripts' digits: Val reads none
    PosText[Index].Text = digitos;
}

void CmpExtra::BtnCmd_Click(int Index) {
    if (Index == 2) return Unload();
    if (Index != 0) return;
    const int campo = Escolhido < 0 ? 0 : Escolhido;
    const QString linha = PosText[0].Text, coluna = PosText[1].Text;
    if (linha.isEmpty() || Val(linha) > 20 || coluna.isEmpty() || Val(coluna) > 120)
        return void(desktop.MsgBox("Campo incorreto", Botoes::OK, "Erro"));
    LinhaCampo[campo] = int(Val(linha));
    ColunaCampo[campo] = int(Val(coluna));
    if (GravaIni(sessao, desktop, "FrenteInfo", chave(campo, "Lin"),
                 QString::number(LinhaCampo[campo])))
        GravaIni(sessao, desktop, "FrenteInfo", chave(campo, "Col"),
                 QString::number(ColunaCampo[campo]));
}

} // namespace vexa
