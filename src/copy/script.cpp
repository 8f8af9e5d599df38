#include "copy/script.h"

#include "catalogo/telas.h"

#include "copy/ajustescript.h"
#include "core/conversoes.h"
#include "core/teclas.h"
#include "store/tabelas.h"

namespace vexa {

const QStringList &CamposScript() {
    static const QStringList c = {"Codigo", "Nome", "l1", "l2",  "l3", "l6", "l7",
                                  "l4",     "l5",   "l8", "c1",  "c2", "c3", "c9",
                                  "c10",    "c4",   "c5", "c11", "c6", "c7", "c8"};
    return c;
}

namespace {
Matriz<Texto> campos_script() {
    static const QStringList legendas = {
        "Codigo:",          "Nome:",      "Valor Numérico:",  "Valor Extenso 1:",
        "Valor Extenso 2:", "Banco : ",   "Número  Cheque :", "Nome Favorecido:",
        "Cidade:",          "Comentário", "Valor Numérico:",  "Valor Extenso 1:",
        "Valor Extenso 2:", "Banco : ",   "Número  Cheque :", "Nome Favorecido:",
        "Cidade:",          "Comentário", "Dia/Mês/Ano:",     "Dia/Mês/Ano:",
        "Dia/Mês/Ano:"};
    Matriz<Texto> campos;
    for (int i = 0; i < legendas.size(); ++i)
        campos.mapa().emplace(i, Texto(legendas[i], i == 1 ? 30 : 3));
    return campos;
}
} // namespace

Script::Script(Sessao &sessao, Desktop &desktop)
    : Cadastro(telas::Script, "Cadastro de Script", sessao, desktop, TabScript, campos_script(),
               "Pesquisar por:") {
    registra_cadastro();
    registra("Command3D2", Command3D2);
    liga("Command3D2", Evento::Click, [this](int) { Command3D2_Click(); });
    // Runs ahead of the leave of the field the focus comes from.
    liga("Text1", Evento::Enter, [this](int) { paraCampo_ = true; });
    liga("Text1", Evento::GotFocus, [this](int i) {
        paraCampo_ = false;
        Text1_GotFocus(i);
    });
}

void Script::Form_Load() {
    Cadastro::Form_Load();
    if (sessao.FechaTela) return;
    localiza(QString());
    Atualiza_List();
}

void Script::Form_Unload() {
    fecha_tabela(sessao, TabScript);
}

bool Script::localiza(const QString &Codigo) {
    if (AbreTabelas(sessao, desktop, 0, 0, 0, 0) == -2) return false;
    RecordSet &rs = conjunto();
    QVariantList valores;
    QString sql = "Select * From Script";
    if (!Codigo.isEmpty()) {
        sql += " Where (Codigo=?)";
        valores << Codigo;
    }
    return rs.Abre(sessao.Banco->db(), sql, valores) && rs.RecordCount() > 0;
}

void Script::Atualiza_List() {
    List1.Clear();
    RecordSet &rs = conjunto();
    if (!rs.Aberto()) return;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
        List1.AddItem(rs.Campo("Codigo") + QString(8, u' ') + "-" + rs.Campo("Nome"));
}

void Script::CarregaScript(const QString &Codigo) {
    if (!localiza(Codigo)) return;
    RecordSet &rs = conjunto();
    rs.MoveFirst();
    for (int i = 0; i < CamposScript().size(); ++i)
        Text1[i].Text = rs.Campo(CamposScript()[i]);
}

void Script::habilita_comandos(bool sim) {
    for (int i = 0; i <= 2; ++i)
        Command3D1[i].Enabled = sim;
    Command3D2.Enabled = sim;
}

void Script::Command3D1_Click(int Index) {
    switch (Index) {
    case 0:
        incluindo_ = true;
        LimpaCampos();
        Text1[0].Enabled = true;
        habilita_comandos(false);
        SetFocus(Text1[0]);
        break;
    case 1:
    case 2:
        grava(Index);
        break;
    case 3:
        Unload();
        break;
    default:
        break;
    }
}

void Script::grava_campos() {
    RecordSet &rs = conjunto();
    for (int i = 0; i < CamposScript().size(); ++i)
        rs.Define(CamposScript()[i], Text1[i].Text);
    if (!rs.Update()) {
        rs.CancelUpdate();
        avisa_registro_nao_gravado(desktop);
    }
}

void Script::grava(int Index) {
    if (Index == 1) {
        // The record chosen in the list is the current one.
        RecordSet &rs = conjunto();
        if (rs.Bof() || rs.Eof()) return;
        rs.Edit();
        grava_campos();
    } else {
        if (!TemSelecao()) return;
        if (localiza(List1.List(List1.ListIndex).left(3))) {
            conjunto().MoveFirst();
            if (!conjunto().Delete()) avisa_registro_nao_gravado(desktop, true);
        }
        LimpaCampos();
        HabilitaBotoes(true, false, false, true);
    }
    localiza(QString());
    Atualiza_List();
}

void Script::Text1_LostFocus(int Index) {
    Q_UNUSED(Index);
    const bool paraCampo = paraCampo_;
    paraCampo_ = false;
    // A layout is known by its code: no other field is typed before it. The buttons and the
    // list stay within reach, so that an empty screen can still be closed.
    if (!paraCampo || !Text1[0].Text.isEmpty()) return;
    Text1[0].Enabled = true;
    SetFocus(Text1[0]);
}

void Script::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    if (Index == 0 && incluindo_) {
        Texto &codigo = Text1[0];
        if (codigo.Text.isEmpty()) return;
        codigo.Text = codigo.Text.rightJustified(3, u'0');
        const RecordSet &rs = conjunto();
        if (rs.Aberto() && rs.RecordCount() > 0 && localiza(codigo.Text)) {
            localiza(QString());
            desktop.MsgBox("Este Código Já Existe");
            codigo.Text.clear();
            return;
        }
        SetFocus(Text1[1]);
        return;
    }
    if (Index < ultimo()) return SetFocus(Text1[Index + 1]);
    if (!incluindo_) return SetFocus(Command3D1[1].Enabled ? Command3D1[1] : Command3D1[0]);
    if (desktop.MsgBox("Deseja Guardar este Script?", Botoes::YesNo, "Cadastro de Script") ==
        Resposta::Yes) {
        localiza(QString());
        conjunto().AddNew();
        grava_campos();
    }
    incluindo_ = false;
    habilita_comandos(true);
    SetFocus(Command3D1[0]);
    localiza(QString());
    Atualiza_List();
}

void Script::PreparaAjuste() {
    for (int i = 1; i <= 8; ++i)
        sessao.AjusteL[i] = Text1[CamposScript().indexOf("l" + QString::number(i))].Text;
    for (int i = 1; i <= 11; ++i)
        sessao.AjusteC[i] = Text1[CamposScript().indexOf("c" + QString::number(i))].Text;
}

void Script::Command3D2_Click() {
    PreparaAjuste();
    abre_tela(sessao, desktop, telas::AjusteScript);
}

} // namespace vexa
