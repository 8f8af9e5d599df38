#include "registers/cadastro.h"

#include "catalogo/telas.h"
#include "core/conversoes.h"
#include "core/teclas.h"
#include "registers/saida.h"
#include "store/basedados.h"
#include "store/tabelas.h"

namespace vexa {

namespace {
// The rows of a register's list, read from a copy of its record set as the list was filled:
// a later filter of the shared set (the search window's) leaves this list as it was. Rows
// are read when the view asks.
class LinhasCadastro {
  public:
    explicit LinhasCadastro(const RecordSet &rs)
        : rs_(rs.Copia()), codigo_(rs_.Coluna("Codigo")), nome_(rs_.Coluna("Nome")) {}
    int conta() const { return rs_.RecordCount(); }
    QString linha(int i) const {
        const QStringList campos = rs_.Linha(i);
        return campos.value(codigo_) + " - " + campos.value(nome_);
    }

  private:
    RecordSet rs_;
    int codigo_, nome_;
};
} // namespace

void preenche_lista(Sessao &s, int Tabela, Lista &lista) {
    lista.Clear();
    RecordSet &rs = Conjunto(s, Tabela);
    if (!rs.Aberto()) return;
    auto linhas = std::make_shared<LinhasCadastro>(rs);
    lista.Itens.fonte(linhas->conta(), [linhas](int i) { return linhas->linha(i); });
    // The shared set ends past its last row, as a walk over it would leave it.
    rs.MoveLast();
    rs.MoveNext();
}

void avisa_base_ausente(Sessao &s, Desktop &d) {
    // A locked database has been told as such when it was opened.
    if (s.Banco && s.Banco->Travada()) return;
    d.MsgBox("O Banco de dados \"" + s.CaminhoApp + "/" + s.NomeMDB + "\" nao foi encontrado!");
}

void avisa_registro_nao_gravado(Desktop &d, bool excluido) {
    d.MsgBox(excluido ? "O registro não foi excluído: o banco de dados não aceitou a exclusão."
                      : "O registro não foi gravado: o banco de dados não aceitou a gravação.",
             Botoes::OK, "Erro", Icone::Exclamacao);
}

void abre_lista(Sessao &s, Desktop &d, const PedidoLista &pedido) {
    s.TabelaLista = pedido.TabelaLista;
    if (pedido.TabelaBancos) s.TabelaBancos = pedido.TabelaBancos;
    const QString tabela = pedido.TabelaLista == "Bancos" && s.TabelaBancos == 2
                               ? QStringLiteral("Transferencia")
                               : pedido.TabelaLista;
    // A record set of its own: the register's shared one keeps what its list shows.
    int total = 0;
    if (AbreTabelas(s, d, 0, 0, 0, 0) != -2) {
        RecordSet rs;
        if (rs.Abre(s.Banco->db(), "Select * From " + tabela)) total = rs.RecordCount();
    }
    if (total > 0) {
        s.TotalLista = total;
        abre_tela(s, d, telas::Saida, true, [&](Tela &saida) {
            static_cast<Saida &>(saida).SSPanel1.Caption =
                "Total = " + QString::number(total) + pedido.Palavra;
        });
    } else {
        d.MsgBox(pedido.MensagemVazio, Botoes::OK, pedido.TituloVazio, Icone::Exclamacao);
    }
    if (pedido.TabelaBancos == 2) s.TabelaBancos = 0;
}

// --- Cadastro

Cadastro::Cadastro(QString nome, QString caption, Sessao &sessao, Desktop &desktop, int tabela,
                   Matriz<Texto> campos, QString procura)
    : Tela(std::move(nome), std::move(caption), sessao, desktop), Text1(std::move(campos)),
      Text2(std::move(procura)), Tabela(tabela) {}

void Cadastro::registra_cadastro(const QString &nomeImprime, Botao &imprime) {
    registra_cadastro();
    registra(nomeImprime, imprime);
    liga(nomeImprime, Evento::Click, [this](int) { abre_lista(sessao, desktop, pedido_lista()); });
}

void Cadastro::registra_cadastro() {
    registra("Text1", Text1);
    registra("Text2", Text2);
    registra("List1", List1);
    registra("Command3D1", Command3D1);
    liga("Command3D1", Evento::Click, [this](int i) { Command3D1_Click(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text2", Evento::Change, [this](int) { Text2_Change(); });
    liga("Text2", Evento::GotFocus, [this](int) { Text2_GotFocus(); });
    liga("List1", Evento::Click, [this](int) {
        if (!TemSelecao()) return;
        HabilitaBotoes(true, true, true, true);
        carrega_linha(List1.List(List1.ListIndex));
    });
}

RecordSet &Cadastro::conjunto() {
    return Conjunto(sessao, Tabela);
}

void Cadastro::Form_Load() {
    HabilitaBotoes(true, false, false, true);
    const int r = AbreTabelas(sessao, desktop, Tabela == TabBancos, Tabela == TabFavorecido,
                              Tabela == TabCidade, 0);
    if (r == -2) {
        avisa_base_ausente(sessao, desktop);
        sessao.FechaTela = 1;
        return;
    }
    LimpaCampos();
    PreencheLista(Tabela);
}

void Cadastro::Form_Unload() {
    FechaTabelas(sessao, Tabela == TabBancos, Tabela == TabFavorecido, Tabela == TabCidade, 0);
}

void Cadastro::HabilitaBotoes(bool Incluir, bool Alterar, bool Excluir, bool Fechar) {
    Command3D1[0].Enabled = Incluir;
    Command3D1[1].Enabled = Alterar;
    Command3D1[2].Enabled = Excluir;
    Command3D1[3].Enabled = Fechar;
    // The code of a loaded record is its key: it can't be edited.
    Text1[0].Enabled = !(Alterar || Excluir);
}

void Cadastro::LimpaCampos() {
    for (auto &[i, campo] : Text1)
        campo.Text.clear();
    // An emptied search shows every record again, as typing it empty would.
    if (!Text2.Text.isEmpty()) Muda(Text2, QString());
}

void Cadastro::PreencheLista(int Tabela) {
    if (Tabela != TabFavorecido && Tabela != TabCidade && Tabela != TabBancos &&
        Tabela != TabScript)
        return;
    preenche_lista(sessao, Tabela, List1);
}

int Cadastro::verifica_campos(int Modo) {
    for (auto &[i, campo] : Text1) {
        if (!campo.Text.isEmpty()) continue;
        desktop.MsgBox("Campo Inválido...", Botoes::OK, "Erro", Icone::Exclamacao);
        SetFocus(campo);
        return 1;
    }
    const int existe = ExisteCodigo(sessao, Text1[0].Text, Tabela);
    if (existe && Modo == 1) {
        desktop.MsgBox("Codigo ja cadastrado...", Botoes::OK, "Erro", Icone::Exclamacao);
        return 1;
    }
    if (!existe && Modo == 0) {
        desktop.MsgBox("Codigo nao encontrado...", Botoes::OK, "Erro", Icone::Exclamacao);
        return 1;
    }
    return 0;
}

void Cadastro::Command3D1_Click(int Index) {
    if (!pergunta_impressora(Index)) return;
    if (Index == 0 && Command3D1[1].Enabled) {
        // A loaded record is on the screen: Incluir asks for a new one.
        HabilitaBotoes(true, false, false, true);
        LimpaCampos();
        SetFocus(Text1[0]);
        return;
    }
    if (Index == 3) return Unload();
    if (verifica(Index == 0 ? 1 : 0)) return;
    grava(Index);
}

void Cadastro::prepara_posicoes(int primeiro, const QStringList &padrao, int linhas) {
    const int ultimo = primeiro + int(padrao.size()) - 1;
    bool algum = false;
    for (int i = primeiro; i <= ultimo; ++i) {
        const double v = Val(Text1[i].Text);
        if (v > 0) {
            algum = true;
            Text1[i].Text = Format(QString::number(v, 'f', 0), "000");
        } else {
            Text1[i].Text = Format(QString::number(2 * i), "000");
        }
    }
    if (!algum)
        for (int i = primeiro; i <= ultimo; ++i)
            Text1[i].Text = padrao[i - primeiro];
    for (int i = primeiro; i <= ultimo; ++i) {
        const int k = i - primeiro;
        (k < linhas ? sessao.AjusteL[k + 1] : sessao.AjusteC[k - linhas + 1]) = Text1[i].Text;
    }
}

void Cadastro::Text1_GotFocus(int Index) {
    Text1[Index].SelecionaTudo = true;
}

void Cadastro::Text1_LostFocus(int Index) {
    Texto &campo = Text1[Index];
    const QString m = mascara(Index);
    if (m.isEmpty() || campo.Text.isEmpty()) return;
    campo.Text = Format(QString::number(Val(campo.Text), 'f', 0), m);
}

void Cadastro::Text1_KeyDown(int Index, int &KeyCode, int) {
    if (KeyCode != tecla::Enter) return;
    if (Index < ultimo())
        SetFocus(Text1[Index + 1]);
    else
        SetFocus(Command3D1[0].Enabled ? Command3D1[0] : Command3D1[1]);
}

void Cadastro::Text2_Change() {
    procura(Text2.Text);
}

void Cadastro::procura(const QString &Filtro) {
    FiltraTabela(sessao, Filtro, Tabela);
    PreencheLista(Tabela);
}

void Cadastro::Text2_GotFocus() {
    Text2.SelecionaTudo = true;
}

// --- CadastroSimples

CadastroSimples::CadastroSimples(QString nome, QString caption, Sessao &sessao, Desktop &desktop,
                                 int tabela, const QString &rotuloNome, int tamanhoNome,
                                 QString semSelecao)
    : Cadastro(std::move(nome), std::move(caption), sessao, desktop, tabela,
               Matriz<Texto>{{0, Texto("Codigo:", 5)}, {1, Texto(rotuloNome, tamanhoNome)}},
               "Procurar por:"),
      tamanhoNome_(tamanhoNome), semSelecao_(std::move(semSelecao)) {}

void CadastroSimples::carrega_linha(const QString &linha) {
    Text1[0].Text = linha.left(5);
    Text1[1].Text = linha.mid(8, tamanhoNome_);
}

void CadastroSimples::grava(int Index) {
    if (Index == 0) {
        if (!TemSelecao()) {
            HabilitaBotoes(true, false, false, true);
            NovoRegistro();
        } else {
            List1.ListIndex = -1;
        }
        return;
    }
    if (TemSelecao()) {
        if (Index == 1)
            AlteraRegistro();
        else
            ExcluiRegistro();
    } else {
        desktop.MsgBox(semSelecao_, Botoes::OK, "Erro", Icone::Exclamacao);
    }
    List1.ListIndex = -1;
    HabilitaBotoes(true, false, false, true);
}

void CadastroSimples::regrava(bool novo) {
    RecordSet &rs = conjunto();
    if (novo)
        rs.AddNew();
    else
        rs.Edit();
    rs.Define("Codigo", Text1[0].Text);
    rs.Define("Nome", Text1[1].Text);
    if (!rs.Update()) {
        rs.CancelUpdate();
        avisa_registro_nao_gravado(desktop);
    }
    atualiza();
}

void CadastroSimples::atualiza() {
    Text1[0].Text.clear();
    Text1[1].Text.clear();
    ExisteCodigo(sessao, QString(), Tabela);
    PreencheLista(Tabela);
}

void CadastroSimples::NovoRegistro() {
    regrava(true);
}

void CadastroSimples::AlteraRegistro() {
    regrava(false);
}

void CadastroSimples::ExcluiRegistro() {
    if (!conjunto().Delete()) avisa_registro_nao_gravado(desktop, true);
    atualiza();
}

} // namespace vexa
