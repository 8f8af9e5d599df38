#include "registers/bancos.h"

#include "catalogo/telas.h"
#include "core/conversoes.h"
#include "core/ini.h"
#include "printer/impressao.h"
#include "registers/ajusta.h"
#include "registers/regras.h"
#include "store/bancos_padrao.h"
#include "store/tabelas.h"
#include "store/talao.h"

namespace vexa {

namespace {
// The fields of table Bancos by the index of Text1.
const QStringList &campos_tabela() {
    static const QStringList c = {"Codigo", "Nome", "L1", "L2", "L3", "L4", "L5", "C1",
                                  "C2",     "C3",   "C4", "C5", "C6", "C7", "C8"};
    return c;
}
// The fifteen fields with their captions: the name keeps 30 characters, the code and every
// position three.
Matriz<Texto> campos_banco() {
    static const QStringList legendas = {
        "Codigo:",          "Nome:",   "Valor Numérico:", "Valor Extenso 1:", "Valor Extenso 2:",
        "Nome Favorecido:", "Cidade:", "Valor Numérico:", "Valor Extenso 1:", "Valor Extenso 2:",
        "Nome Favorecido:", "Cidade:", "Dia/Mês/Ano:",    "Dia/Mês/Ano:",     "Dia/Mês/Ano:"};
    Matriz<Texto> campos;
    for (int i = 0; i < legendas.size(); ++i)
        campos.mapa().emplace(i, Texto(legendas[i], i == 1 ? 30 : 3));
    return campos;
}
} // namespace

Bancos::Bancos(Sessao &sessao, Desktop &desktop)
    : Cadastro(telas::Bancos, "Cadastro de Bancos", sessao, desktop, TabBancos, campos_banco(),
               "Pesquisar por:") {
    registra_cadastro("SSCommand1", SSCommand1);
    registra("ProximoCheque", ProximoCheque);
    registra("Command3D2", Command3D2);
    liga("Command3D2", Evento::Click, [this](int) { Command3D2_Click(); });
}

int Bancos::TemCampoVazio() const {
    for (const auto &[i, campo] : Text1)
        if (campo.Text.isEmpty()) return 1;
    return 0;
}

QStringList Bancos::Posicoes() const {
    QStringList p;
    for (int i = 2; i <= 14; ++i)
        p.append(Text1[i].Text);
    return p;
}

bool Bancos::pergunta_impressora(int Index) {
    if ((Index != 0 && Index != 1) || TemCampoVazio()) return true;
    if (desktop.MsgBox("Deseja Atualizar na Impressora?", Botoes::YesNo, "Comando Vexa") !=
        Resposta::Yes)
        return true;
    const QString codigo = Text1[0].Text;
    const QStringList posicoes = Posicoes();
    PedidoImpressora pedido{codigo, posicoes.join(','), [this, codigo, posicoes] {
                                if (VerificaPosicoes(codigo, posicoes)) return true;
                                mostra_aviso(desktop, AvisoPosicoes);
                                return false;
                            }};
    return ComandoImpressora(sessao, desktop, 0, pedido) != 0;
}

void Bancos::grava(int Index) {
    if (Index == 0) {
        if (TemSelecao()) return LimpaCampos();
        HabilitaBotoes(true, false, false, true);
        NovoRegistroBanco();
        AtualizaIni(0);
    } else if (TemSelecao()) {
        if (Index == 1)
            AlteraRegistroBanco();
        else
            ExcluiRegistroBanco();
        AtualizaIni(Index);
    } else {
        desktop.MsgBox("Selecione um banco...", Botoes::OK, "Erro", Icone::Exclamacao);
    }
    if (Index != 0) HabilitaBotoes(true, false, false, true);
    ExisteCodigo(sessao, QString(), TabBancos);
    PreencheLista(TabBancos);
    LimpaCampos();
    ProximoCheque.Text.clear();
}

void Bancos::Command3D1_Click(int Index) {
    Cadastro::Command3D1_Click(Index);
    // The screen emptied for a new bank: the number of the one shown goes with it.
    if (Text1[0].Text.isEmpty()) ProximoCheque.Text.clear();
}

void Bancos::CarregaBanco(const QString &Codigo) {
    if (Codigo.isEmpty()) return;
    ExisteCodigo(sessao, Codigo, TabBancos);
    const RecordSet &rs = conjunto();
    for (int i = 0; i < campos_tabela().size(); ++i)
        Text1[i].Text = rs.Campo(campos_tabela()[i]);
    ProximoCheque.Text = proximo_cheque(sessao, Codigo);
}

void Bancos::grava_campos() {
    RecordSet &rs = conjunto();
    for (int i = 0; i < campos_tabela().size(); ++i)
        rs.Define(campos_tabela()[i], Text1[i].Text);
    if (!rs.Update()) {
        rs.CancelUpdate();
        return avisa_registro_nao_gravado(desktop);
    }
    if (!grava_proximo_cheque(sessao, Text1[0].Text, ProximoCheque.Text))
        avisa_registro_nao_gravado(desktop);
}

void Bancos::NovoRegistroBanco() {
    conjunto().AddNew();
    grava_campos();
}

void Bancos::AlteraRegistroBanco() {
    conjunto().Edit();
    grava_campos();
}

void Bancos::ExcluiRegistroBanco() {
    if (!conjunto().Delete()) avisa_registro_nao_gravado(desktop, true);
}

QString Bancos::linha_formato() const {
    QStringList valores;
    for (int i = 2; i <= 14; ++i) {
        const QString &v = Text1[i].Text;
        // Values below 100 take two digits; the others stand as typed, three wide.
        valores.append(Val(v) < 100 ? Format(QString::number(Val(v), 'f', 0), "00") : v);
    }
    return valores.join(',') + "    ; " + Text1[1].Text.left(20);
}

void Bancos::AtualizaIni(int Modo) {
    const QString linha = linha_formato();
    if (Modo != 0 && Modo != 1) return;
    if (LeGravaIni(sessao.CaminhoIni, "Formato", Text1[0].Text, linha) != "1")
        desktop.MsgBox("Problemas na alteracao do arquivo VEXA.INI", Botoes::OK, "Erro",
                       Icone::Exclamacao);
}

void Bancos::PreparaAjuste() {
    prepara_posicoes(2, posicoes_padrao(), 5);
}

void Bancos::Command3D2_Click() {
    if (Text1[0].Text.isEmpty() || Text1[1].Text.isEmpty()) return;
    PreparaAjuste();
    abre_tela(sessao, desktop, telas::Ajusta);
}

PedidoLista Bancos::pedido_lista() const {
    return {"Bancos", 1, " Bancos Cadastrados"};
}

} // namespace vexa
