// The entry screen's fields: filling and clearing them from the stored lines, what leaving
// each one does to its text, their keys, and the check of a cheque before it prints.
#include "cheque/main.h"

#include "catalogo/telas.h"
#include "cheque/extra.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/teclas.h"
#include "store/tabelas.h"

namespace vexa {

namespace {

const QString TituloPrograma = "Vexa PLUS - Document Printer";

// The size limits of text that reaches a field otherwise than by typing: at a length of
// `ate` or more the text is cut to `corta` (the city to less than its typing stop).
struct Limite {
    int ate, corta;
};
const std::map<int, Limite> limites_text1 = {
    {0, {4, 3}}, {1, {17, 16}}, {2, {48, 47}}, {3, {21, 15}}, {6, {13, 12}}};
constexpr Limite limite_text2{81, 80};

// The settings key of each front field that F4 stores; the date and the number aren't.
const std::map<int, QString> chaves_frente = {
    {0, "NumBanco"}, {1, "Valor"}, {2, "Favorecido"}, {3, "Cidade"}};

// Where Enter goes from each field.
const std::vector<RefControle> ordem_frente = {{"Text1", 0}, {"Text1", 1}, {"Text1", 2},
                                               {"Text1", 3}, {"Text1", 4}, {"Text1", 6},
                                               {"Opcoes", 0}};
std::vector<RefControle> ordem_de(const QString &nome, int n, const RefControle &depois) {
    std::vector<RefControle> ordem;
    for (int i = 0; i < n; ++i)
        ordem.push_back({nome, i});
    ordem.push_back(depois);
    return ordem;
}
const std::vector<RefControle> ordem_verso = ordem_de("Text2", 10, {"Opcoes", 0});
const std::vector<RefControle> ordem_extras = ordem_de("TxtCpo", 3, {"Text1", 6});

QString chave_verso(int i) {
    return QStringLiteral("Linha%1").arg(i, 2, 10, QLatin1Char('0'));
}
QString chave_extra(int i) {
    return QStringLiteral("Campo0%1").arg(i);
}

// A field stored with F4: "-2" when there is none. An empty field is stored as one blank,
// which the settings file gives back trimmed; the blank is put back.
QString le_guardado(const Sessao &s, const QString &secao, const QString &chave) {
    const QString v = LeGravaIni(s.CaminhoIni, secao, chave, "");
    return v.isEmpty() ? QStringLiteral(" ") : v;
}

} // namespace

// --- filling and clearing

void Main::LimpaTela() {
    LimpaFrente();
    Label1[6].Caption.clear();
    LimpaVerso();
}

void Main::LimpaFrente() {
    for (auto &[i, t] : Text1)
        Muda(t, QString());
    Label1[6].Caption.clear();
    numeroProposto_.clear();
    CarregaFrente();
    PropoeNumero();
}

void Main::CarregaFrente() {
    for (const auto &[i, chave] : chaves_frente) {
        const QString v = le_guardado(sessao, "FrenteInfo", chave);
        if (v != "-2") Muda(Text1[i], v);
    }
    for (int i = 0; i < 3; ++i) {
        const QString v = le_guardado(sessao, "FrenteInfo", chave_extra(i));
        if (v != "-2") Muda(TxtCpo[i], v);
    }
}

void Main::LimpaVerso() {
    for (auto &[i, t] : Text2) {
        const QString v = le_guardado(sessao, "Verso", chave_verso(i));
        Muda(t, v == "-2" ? QString() : v);
    }
}

QStringList Main::TextosExtras() const {
    QStringList textos;
    // A field of blanks prints nothing, so it goes as empty: the blank that F4 stores for an
    // empty field comes back at each clearing, and must not stop every cheque for want of a
    // position.
    for (const auto &[i, t] : TxtCpo)
        textos.append(t.Text.trimmed().isEmpty() ? QString() : t.Text);
    return textos;
}

// --- the fields' events

void Main::Text1_Change(int Index) {
    // The name beside the bank is the looked-up code's: a code that changed by any road (typed,
    // picked in the search, sent by another program) shows none until it is looked up.
    if (Index == 0) Label1[6].Caption.clear();
    const auto limite = limites_text1.find(Index);
    if (limite != limites_text1.end())
        corta_tamanho(*this, Text1[Index], limite->second.ate, limite->second.corta);
}

void Main::Text2_Change(int Index) {
    corta_tamanho(*this, Text2[Index], limite_text2.ate, limite_text2.corta);
}

void Main::Text1_GotFocus(int Index) {
    if (!sessao.ResultadoPesquisa.isEmpty()) {
        Muda(Text1[Index], sessao.ResultadoPesquisa);
        sessao.ResultadoPesquisa.clear();
    }
    sessao.ValidaCampos = 1;
    Text1[Index].SelecionaTudo = true;
}

void Main::Text2_GotFocus(int Index) {
    Text2[Index].SelecionaTudo = true;
    sessao.ValidaCampos = 0;
}

void Main::TxtCpo_GotFocus(int Index) {
    TxtCpo[Index].SelecionaTudo = true;
    dicaGuardada_ = Panel3D2.Caption;
    Panel3D2.Caption = "F3 - Programa Campo  |  F8 - Limpa Campo  |  F4 - Grava Linha";
}

void Main::TxtCpo_LostFocus(int) {
    Panel3D2.Caption = dicaGuardada_;
}

void Main::Opcoes_Enter(int Index) {
    // Clearing the screen must not stop at a bad field: the field being left is emptied
    // instead of checked.
    if (Index == 3 || Index == 4) sessao.ValidaCampos = 0;
}

void Main::Text1_LostFocus(int Index) {
    if (sessao.ValidaCampos == 0) {
        Muda(Text1[Index], QString());
        sessao.ValidaCampos = 1;
        return;
    }
    if (Index == 4) return sai_data();
    if (!NormalizaCampo(Index)) SetFocus("Text1", Index);
}

bool Main::NormalizaCampo(int Index) {
    switch (Index) {
    case 0:
        return normaliza_banco();
    case 1:
        return normaliza_valor();
    case 4:
        return normaliza_data();
    default:
        return true;
    }
}

bool Main::normaliza_banco() {
    Texto &campo = Text1[0];
    // Also a code that can't be looked up shows no name.
    Label1[6].Caption.clear();
    if (Val(campo.Text) <= 0) {
        Muda(campo, QString());
        return true;
    }
    Muda(campo, Format(campo.Text, "000"));
    if (AbreTabelas(sessao, desktop, 1, 0, 0, 0) == -2) return true;
    const std::optional<QString> nome = le_nome_banco(sessao, campo.Text);
    FechaTabelas(sessao, 1, 0, 0, 0);
    // Held by another program since it was opened: the code stays, unchecked, and is no
    // reason to call the bank missing.
    if (!nome) {
        avisa_registro_ilegivel(desktop, sessao);
        return true;
    }
    if (*nome != "Inexistente") {
        Label1[6].Caption = *nome;
        PropoeNumero();
        return true;
    }
    Muda(campo, QString());
    desktop.MsgBox("Banco Inexistente...", Botoes::OK, "Erro");
    return false;
}

bool Main::normaliza_valor() {
    Texto &campo = Text1[1];
    if (campo.Text.isEmpty()) return true;
    const auto valor = centavos(campo.Text);
    if (!valor) {
        Muda(campo, QString());
        return false;
    }
    // Through the mask a larger amount outgrows the field, whose cut would leave another number.
    if (qAbs(*valor) > ValorMaximoCheque) {
        desktop.MsgBox(MensagemValorMaximo, Botoes::OK, TituloPrograma, Icone::Exclamacao);
        return false;
    }
    Muda(campo, formata_centavos(*valor, "###,##0.00"));
    return true;
}

bool Main::normaliza_data() {
    Texto &campo = Text1[4];
    if (const auto data = data_digitada(campo.Text, sessao.MesAno)) {
        Muda(campo, *data);
        return true;
    }
    desktop.MsgBox("Data Inválida.", Botoes::OK, TituloPrograma);
    Muda(campo, QString());
    return false;
}

void Main::sai_data() {
    // An empty date becomes today's, and the number is next.
    const bool vazia = Text1[4].Text.isEmpty();
    if (!normaliza_data())
        SetFocus("Text1", 4);
    else if (vazia)
        SetFocus("Text1", 6);
}

bool Main::limpa_ou_grava(Texto &campo, int KeyCode, const QString &secao, const QString &chave) {
    if (KeyCode == tecla::F8) {
        Muda(campo, QString());
        return true;
    }
    if (KeyCode != tecla::F4) return false;
    // An empty value would read the key instead of storing it.
    if (!chave.isEmpty())
        GravaIni(sessao, desktop, secao, chave, campo.Text.isEmpty() ? " " : campo.Text);
    return true;
}

void Main::Text1_KeyDown(int Index, int &KeyCode, int) {
    const auto chave = chaves_frente.find(Index);
    if (limpa_ou_grava(Text1[Index], KeyCode, "FrenteInfo",
                       chave == chaves_frente.end() ? QString() : chave->second))
        return;
    if (KeyCode == tecla::F3) {
        static const std::map<int, qint16> tipos = {{0, 2}, {2, 0}, {3, 1}};
        if (!tipos.count(Index)) return;
        sessao.TipoPesquisa = tipos.at(Index);
        abre(telas::Pesquisa);
    }
    // An empty city keeps the focus.
    if (KeyCode == tecla::Enter && Index == 3 && Text1[3].Text.isEmpty()) {
        KeyCode = 0;
        return;
    }
    enter_avanca(*this, {"Text1", Index}, KeyCode, ordem_frente);
}

void Main::Text2_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_ou_grava(Text2[Index], KeyCode, "Verso", chave_verso(Index))) return;
    enter_avanca(*this, {"Text2", Index}, KeyCode, ordem_verso);
}

void Main::TxtCpo_KeyDown(int Index, int &KeyCode, int) {
    if (limpa_ou_grava(TxtCpo[Index], KeyCode, "FrenteInfo", chave_extra(Index))) return;
    if (KeyCode == tecla::F3) abre_campo_extra(Index);
    enter_avanca(*this, {"TxtCpo", Index}, KeyCode, ordem_extras);
}

void Main::abre_campo_extra(int campo) {
    auto *extra = dynamic_cast<CmpExtra *>(abre(telas::CmpExtra));
    if (!extra) return;
    extra->CmdNumCampo_Click(campo);
    extra->SetFocus("PosText", 0);
    extra->Refresh();
}

// --- the check before printing

bool Main::ValidaCheque() {
    const auto falha = [this](const QString &mensagem, int campo) {
        if (!mensagem.isEmpty())
            desktop.MsgBox(mensagem, Botoes::OK, TituloPrograma, Icone::Exclamacao);
        SetFocus("Text1", campo);
        return false;
    };
    if (Text1[0].Text.isEmpty()) return falha("O número do banco não pode ser vazio", 0);
    if (Text1[1].Text == "0,00") return falha("O valor não pode ser igual a zero (0,00).", 1);
    if (Text1[1].Text.isEmpty()) return falha("O valor não pode ser vazio", 1);
    if (valor_numerico(Text1[1].Text) <= 0) return falha("Valor inválido", 1);
    if (Text1[4].Text.isEmpty()) return falha("A data não pode ser vazia", 4);
    QString data = Text1[4].Text;
    if (data.size() > 6 && data[5] == u'/') data.remove(u'/');
    if (!DataValida(data)) return falha(QString(), 4);
    if (sessao.NumeroObrigatorio == 1 && Text1[6].Text.isEmpty()) return falha(QString(), 6);
    return true;
}

} // namespace vexa
