#include "reports/excluirel.h"
#include "reports/andamento.h"

#include "printer/vexa32.h"
#include "registers/cadastro.h"
#include "reports/relato.h"
#include "store/basedados.h"
#include "store/tabelas.h"

#include <QSqlDatabase>

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
    // One transaction for the run: each cheque written on its own would wait for the disk once
    // per cheque. What could not be committed is rolled back, and the list refilled afterwards
    // shows the register as it stands. Only inside the transaction can the operator stop the
    // run: every cheque then stays as it was.
    QSqlDatabase db = sessao.Banco ? sessao.Banco->db() : QSqlDatabase();
    const bool junta = chaves.size() > 1 && db.isValid() && db.transaction();
    // The set the list was filled from, put back when the run is stopped.
    RecordSet &atual = Conjunto(sessao, TabLog);
    RecordSet antes = atual.Aberto() ? atual.Copia() : RecordSet();
    bool gravou = true, parou = false;
    {
        // Only a run inside one transaction can be stopped, and only it shows a progress.
        const auto p = junta ? desktop.AbreProgresso("Opções de Cancelamento") : nullptr;
        if (p)
            p->Etapa(QString("Cancelando %1 cheques no banco de dados...").arg(chaves.size()),
                     int(chaves.size()));
        constexpr int Bloco = 2000;
        for (qsizetype i = 0; i < chaves.size() && !parou; i += Bloco) {
            gravou = MarcaCheques(sessao, desktop, chaves.mid(i, Bloco), "C") && gravou;
            parou = p && !segue(p.get(), qMin<qsizetype>(i + Bloco, chaves.size()));
        }
    }
    if (parou) {
        db.rollback();
        atual = std::move(antes);
        atual.Requery();
        return;
    }
    r.RemoveLinhas(linhas);
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

bool ExcluiRel::confirma(const Relato *r, const std::set<int> &linhas,
                         const QString &naImpressora) {
    QStringList partes;
    if (linhas.size() == 1)
        partes << "Este cheque será marcado como cancelado no banco de dados:\n\n" +
                      descreve_linha(r->List1.List(*linhas.begin()));
    else if (linhas.size() > 1)
        partes << QString("Os %1 cheques %2 serão marcados como cancelados no banco de dados.")
                      .arg(linhas.size())
                      .arg(QString(RadioBox01[1].Value ? "da lista" : "escolhidos"));
    if (naImpressora == "u")
        partes << "O último cheque do relatório da impressora será cancelado.";
    else if (naImpressora == "*")
        partes << "Todo o relatório da impressora será cancelado.";
    if (partes.isEmpty()) return true;
    return desktop.MsgBox(partes.join("\n\n") + "\n\nConfirma o cancelamento?", Botoes::YesNo,
                          "Opções de Cancelamento", Icone::Pergunta, Resposta::No) == Resposta::Yes;
}

void ExcluiRel::BtnCmd_Click(int Index) {
    if (Index != 0) return Unload();
    Relato *r = relato();
    const bool banco = CheckBox01[1].Value != 0 && r, impressora = CheckBox01[0].Value != 0;
    std::set<int> linhas;
    QString naImpressora;
    // "Cheque selecionado" ends with the complete list; the others with the current set.
    bool completa = false;
    if (RadioBox01[2].Value) {
        if (banco && r->List1.ListIndex >= 0) {
            completa = true;
            for (int i = 0; i < r->List1.ListCount(); ++i)
                if (r->List1.Selected(i)) linhas.insert(linhas.end(), i);
        }
    } else if (RadioBox01[0].Value) {
        if (impressora) naImpressora = "u";
        if (banco && r->List1.ListCount() > 0) linhas.insert(r->List1.ListCount() - 1);
    } else if (RadioBox01[1].Value) {
        if (impressora) naImpressora = "*";
        if (banco)
            for (int i = 0; i < r->List1.ListCount(); ++i)
                linhas.insert(linhas.end(), i);
    }
    // No leaves the options open, nothing done.
    if (!confirma(r, linhas, naImpressora)) return;
    if (!naImpressora.isEmpty()) cancela_na_impressora(naImpressora);
    if (!linhas.empty()) cancela_linhas(*r, linhas);
    Unload();
    // The list shows the register again: the whole of it after "Cheque selecionado"; after
    // the last or every cheque marked, the current set, which is the cheque marked last.
    if (!r) return;
    if (completa) {
        r->ListaCompletaLog();
        r->LimpaDetalhe();
    } else {
        r->CarregaListaLog();
    }
    r->Refresh();
}

} // namespace vexa
