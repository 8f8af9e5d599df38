#include "settings/opsoft.h"

#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/grava_ini.h"
#include "core/ini.h"

namespace vexa {

namespace {

// The key of each number in section Opcoes, by the index of its field.
const char *const ChaveOpcao[] = {"PeriodoRelExc", "PeriodoCopExc", "NumChkPgRel"};

QString so_algarismos(QString texto) {
    texto.removeIf([](QChar c) { return c < u'0' || c > u'9'; });
    return texto;
}

// The field's number held to the range: an empty field or zero is the least there is.
int dentro_da_faixa(const QString &texto) {
    return int(qBound(double(OpcaoMinima), Val(texto), double(OpcaoMaxima)));
}

} // namespace

OpSoft::OpSoft(Sessao &sessao, Desktop &desktop)
    : Tela(telas::OpSoft, "Opções do Software", sessao, desktop) {
    registra("Label1", Label1);
    registra("Text01", Text01);
    registra("VScroll01", VScroll01);
    registra("CheckImpInv", CheckImpInv);
    registra("CheckUsarNum", CheckUsarNum);
    registra("BtnCmd", BtnCmd);

    liga("Text01", Evento::Change, [this](int i) { Text01_Change(i); });
    liga("Text01", Evento::LostFocus, [this](int i) { Text01_LostFocus(i); });
    liga("Text01", Evento::GotFocus, [this](int i) { Text01_GotFocus(i); });
    ligaTecla("Text01", Evento::KeyDown, [this](int i, int &k, int) { Text01_KeyDown(i, k); });
    liga("VScroll01", Evento::Change, [this](int i) { VScroll01_Change(i); });
    liga("BtnCmd", Evento::Click, [this](int i) { BtnCmd_Click(i); });
}

qint16 &OpSoft::valor_sessao(int Index) {
    switch (Index) {
    case 0:
        return sessao.PeriodoRel;
    case 1:
        return sessao.PeriodoCop;
    default:
        return sessao.ChequesPorPagina;
    }
}

void OpSoft::Form_Load() {
    for (auto &[i, campo] : Text01) {
        const qint16 valor = valor_sessao(i);
        campo.Text = QString::number(valor);
        VScroll01[i].Value = qBound(OpcaoMinima, int(valor), OpcaoMaxima);
    }
    CheckImpInv.Value = sessao.UsaInvertida ? 1 : 0;
    CheckUsarNum.Value = sessao.NumeroObrigatorio ? 1 : 0;
    SetFocus("Text01", 0);
}

void OpSoft::Text01_Change(int Index) {
    const QString digitos = so_algarismos(Text01[Index].Text);
    if (digitos != Text01[Index].Text) Text01[Index].Text = digitos;
}

void OpSoft::Text01_LostFocus(int Index) {
    const int valor = dentro_da_faixa(Text01[Index].Text);
    Text01[Index].Text = QString::number(valor);
    // The bar follows the field; its Change sees that it hasn't the focus and writes nothing.
    VScroll01[Index].Value = valor;
}

void OpSoft::Text01_GotFocus(int Index) {
    Text01[Index].SelecionaTudo = true;
}

void OpSoft::Text01_KeyDown(int Index, int &KeyCode) {
    enter_avanca(*this, RefControle{"Text01", Index}, KeyCode,
                 {{"Text01", 0},
                  {"Text01", 1},
                  {"Text01", 2},
                  {"CheckImpInv"},
                  {"CheckUsarNum"},
                  {"BtnCmd", 0}});
}

void OpSoft::VScroll01_Change(int Index) {
    if (!(Foco() == RefControle{"VScroll01", Index})) return;
    Text01[Index].Text = QString::number(VScroll01[Index].Value).trimmed();
}

void OpSoft::BtnCmd_Click(int Index) {
    if (Index != 0) return Unload();
    // Every option is taken for this run; a file that refuses any of them is told once.
    bool gravado = true;
    const auto grava = [&](const char *chave, const QString &valor) {
        gravado = LeGravaIni(sessao.CaminhoIni, "Opcoes", chave, valor) == "1" && gravado;
    };
    for (auto &[i, campo] : Text01) {
        const int valor = dentro_da_faixa(campo.Text);
        if (valor == valor_sessao(i)) continue;
        grava(ChaveOpcao[i], QString::number(valor));
        valor_sessao(i) = qint16(valor);
    }
    const auto grava_caixa = [&](const Caixa &caixa, const char *chave, qint16 &destino) {
        destino = caixa.Value ? 1 : 0;
        grava(chave, destino ? "1" : "0");
    };
    grava_caixa(CheckImpInv, "UsarImpInv", sessao.UsaInvertida);
    grava_caixa(CheckUsarNum, "NumCObrig", sessao.NumeroObrigatorio);
    if (!gravado) AvisaIniNaoGravado(desktop);
    Unload();
}

} // namespace vexa
