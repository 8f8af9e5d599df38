#include "registers/pesquisa.h"

#include "catalogo/telas.h"
#include "core/teclas.h"
#include "registers/cadastro.h"
#include "store/tabelas.h"

namespace vexa {

void abre_registro(Sessao &s, Desktop &d, int Tipo) {
    static const std::map<int, QString> registros = {
        {0, telas::Favorec}, {1, telas::Cidade}, {2, telas::Bancos}};
    const auto r = registros.find(Tipo);
    if (r != registros.end()) abre_tela(s, d, r->second);
}

Pesquisa::Pesquisa(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Pesquisa, "Pesquisa", sessao, desktop) {
    registra("Text1", Text1);
    registra("List1", List1);
    registra("Command3D1", Command3D1);
    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("List1", Evento::DblClick, [this](int) { List1_DblClick(); });
    ligaTecla("List1", Evento::KeyDown, [this](int, int &k, int s) { List1_KeyDown(k, s); });
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
}

void Pesquisa::Form_Load() {
    Text1[0].Text.clear();
    sessao.ResultadoPesquisa.clear();
    const int tipo = sessao.TipoPesquisa;
    if (AbreTabelas(sessao, desktop, tipo == 2, tipo == 0, tipo == 1, 0) == -2) {
        avisa_base_ausente(sessao, desktop);
        sessao.FechaTela = 1;
        return;
    }
    PreencheListaPesquisa(tipo);
    SetFocus(Text1[0]);
}

void Pesquisa::Form_Unload() {
    if (sessao.FechaTela) return;
    const int tipo = sessao.TipoPesquisa;
    FechaTabelas(sessao, tipo == 2, tipo == 0, tipo == 1, 0);
}

void Pesquisa::PreencheListaPesquisa(int Tipo) {
    if (Tipo < 0 || Tipo > 2) return;
    preenche_lista(sessao, Tipo, List1);
}

void Pesquisa::Text1_Change(int) {
    PesquisaLista(sessao, Text1[0].Text, sessao.TipoPesquisa);
    PreencheListaPesquisa(sessao.TipoPesquisa);
}

void Pesquisa::Text1_GotFocus(int) {
    Text1[0].SelecionaTudo = true;
    if (List1.ListCount() > 0 || sessao.FechaTela) return;
    if (desktop.MsgBox("Nao existe registro para pesquisar!!!\rDeseja cadastrar algum dado?",
                       Botoes::OKCancel) == Resposta::OK) {
        abre_registro(sessao, desktop, sessao.TipoPesquisa);
        sessao.ResultadoPesquisa.clear();
    }
    Unload();
}

void Pesquisa::aceita() {
    if (List1.ListIndex >= 0) {
        const QString linha = List1.List(List1.ListIndex);
        if (sessao.TipoPesquisa == 0)
            sessao.ResultadoPesquisa = NomeFavorecido(sessao, linha.left(5));
        else if (sessao.TipoPesquisa == 1)
            sessao.ResultadoPesquisa = NomeCidade(sessao, linha.left(5));
        else
            sessao.ResultadoPesquisa = linha.left(3);
    }
    Unload();
}

void Pesquisa::List1_DblClick() {
    aceita();
}

// Enter accepts from the keyboard: on the list the chosen line, in the search field the
// chosen line or else the first one the search found.
void Pesquisa::Text1_KeyDown(int, int &KeyCode, int) {
    if (KeyCode != tecla::Enter || List1.ListCount() == 0) return;
    KeyCode = 0;
    if (List1.ListIndex < 0) List1.ListIndex = 0;
    aceita();
}

void Pesquisa::List1_KeyDown(int &KeyCode, int) {
    if (KeyCode != tecla::Enter || List1.ListIndex < 0) return;
    KeyCode = 0;
    aceita();
}

void Pesquisa::Command3D1_Click(int Index) {
    if (Index == 0) return aceita();
    if (Index == 1) sessao.ResultadoPesquisa.clear();
    if (Index == 2) abre_registro(sessao, desktop, sessao.TipoPesquisa);
    Unload();
}

} // namespace vexa
