#include "reports/excluirel.h"

#include "printer/vexa32.h"
#include "registers/cadastro.h"
#include "reports/relato.h"
#include "store/basedados.h"
#include "store/tabelas.h"

namespace vexa {

ExcluiRel::ExcluiRel(Sessao &sessao, Desktop &desktop)
    : Tela(telas::ExcluiRel, "Opções de Cancelamento", sessao, desktop) {
    for (auto &[i, r] : RadioBox01)
        r.Container = &Frame1;
    for (auto &[i, c] : CheckBox01)
        c.Container = &Frame2;
    RadioBox01[2].Value = 1;
    CheckBox01[1].Value = 1;
    registra("Frame1", Frame1);
    registra("Frame2", Frame2);
    registra("RadioBox01", RadioBox01);
    registra("CheckBox01", CheckBox01);
    registra("BtnCmd", BtnCmd);
    liga("RadioBox01", Evento::Click, [this](int i) { RadioBox01_Click(i); });
    liga("CheckBox01", Evento::Click, [this](int i) { CheckBox01_Click(i); });
    liga("BtnCmd", Evento::Click, [this](int i) { BtnCmd_Click(i); });
}

Relato *ExcluiRel::relato() const {
    return dynamic_cast<Relato *>(desktop.Aberta(telas::Relato));
}

void ExcluiRel::RadioBox01_Click(int Index) {
    // The printer's report can't be reached cheque by cheque.
    if (Index == 2 && CheckBox01[0].Value) CheckBox01[0].Value = 0;
}

void ExcluiRel::CheckBox01_Click(int Index) {
    if (Index == 0 && CheckBox01[0].Value && RadioBox01[2].Value) {
        RadioBox01[2].Value = 0;
        RadioBox01[0].Value = 1;
    }
}

void ExcluiRel::cancela_linhas(Relato &r, const std::set<int> &linhas) {
    QStringList chaves;
    chaves.reserve(int(linhas.size()));
    for (int i : linhas)
        chaves << r.List1.List(i).mid(128, 10).trimmed();
    r.RemoveLinhas(linhas);
    // One transaction for the run: each cheque written on its own would wait for the disk once
    // per cheque. What could not be committed is rolled back, and the list refilled afterwards
    // shows the register as it stands.
    QSqlDatabase db = sessao.Banco ? sessao.Banco->db() : QSqlDatabase();
    const bool junta = chaves.size() > 1 && db.isValid() && db.transaction();
    bool gravou = MarcaCheques(sessao, desktop, chaves, "C");
    if (junta && !db.commit()) {
        db.rollback();
        gravou = false;
    }
    if (!gravou) avisa_registro_nao_gravado(desktop);
}

void ExcluiRel::cancela_na_impressora(const QString &Opcao) {
    if (!sessao.Impressora) return;
    Vexa32 &imp = *sessao.Impressora;
    imp.IniciaPorta(sessao.PortaImpressora);
    imp.CancelaRel(Opcao);
    imp.FechaPorta();
}

void ExcluiRel::BtnCmd_Click(int Index) {
    if (Index != 0) return Unload();
    Relato *r = relato();
    const bool banco = CheckBox01[1].Value != 0, impressora = CheckBox01[0].Value != 0;
    if (RadioBox01[2].Value) {
        if (banco && r && r->List1.ListIndex >= 0) {
            std::set<int> escolhidas;
            for (int i = 0; i < r->List1.ListCount(); ++i)
                if (r->List1.Selected(i)) escolhidas.insert(escolhidas.end(), i);
            cancela_linhas(*r, escolhidas);
            r->ListaCompletaLog();
            r->LimpaDetalhe(true);
        }
    } else if (RadioBox01[0].Value) {
        if (impressora) cancela_na_impressora("u");
        if (banco && r && r->List1.ListCount() > 0) cancela_linhas(*r, {r->List1.ListCount() - 1});
    } else if (RadioBox01[1].Value) {
        if (impressora) cancela_na_impressora("*");
        if (banco && r) {
            std::set<int> todas;
            for (int i = 0; i < r->List1.ListCount(); ++i)
                todas.insert(todas.end(), i);
            cancela_linhas(*r, todas);
        }
    }
    Unload();
    // The list shows the current set of the register again: after the last or every cheque
    // marked, that set is the cheque marked last.
    if (r) {
        r->CarregaListaLog();
        r->Refresh();
    }
}

} // namespace vexa
