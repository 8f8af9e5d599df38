#include "cheque/main.h"

#include "cheque/extra.h"
#include "cheque/frente.h"
#include "cheque/pedidos.h"
#include "cheque/verso.h"
#include "core/conversoes.h"
#include "core/entrada.h"
#include "core/ini.h"
#include "core/inicio.h"
#include "core/instancia.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "printer/vexa32.h"
#include "settings/importa.h"
#include "catalogo/telas.h"
#include "store/tabelas.h"

#include <QFileInfo>
#include <utility>

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

Main::Main(Sessao &sessao, Desktop &desktop, const QString &linhaComando)
    : Tela(telas::Main, "Vexa - Plus Document Printer", sessao, desktop),
      linhaComando_(linhaComando) {
    LarguraJanela = 880;
    AlturaJanela = 600;
    ParametrosCheque = QStringList(7);

    const std::map<int, QString> rotulos = {{0, "Banco:"}, {1, "Valor:"},     {3, "Cidade:"},
                                            {4, "Data:"},  {5, "Nº Cheque:"}, {6, ""}};
    for (const auto &[i, c] : rotulos)
        Label1.mapa().emplace(i, Rotulo(c));
    for (int i = 0; i < 10; ++i) {
        const QString rotulo =
            i < 3 ? QStringLiteral("Cmd%1:").arg(i + 1) : QStringLiteral("Vrs%1:").arg(i + 1);
        Label1.mapa().emplace(i + 7, Rotulo(rotulo));
        Text2.mapa().emplace(i, Texto("", 60));
    }
    for (int i = 0; i < 3; ++i)
        TxtCpo.mapa().emplace(i, Texto());
    Label1[6].ToolTipText = "Nome do Banco";
    Label2.ForeColor = 0x808080; // a hint, not a label

    // Every print sweeps this gauge, also those of the screens opened from here.
    sessao.Gauge1 = &Gauge1;

    // Registered in the order of the screen: the focus walks them so.
    registra("Text1", Text1);
    registra("Label1", Label1);
    registra("Label2", Label2);
    registra("CheckBox", CheckBox);
    registra("Frame1", Frame1);
    registra("Frame3", Frame3);
    registra("Text2", Text2);
    registra("Frame4", Frame4);
    registra("TxtCpo", TxtCpo);
    registra("Label4", Label4);
    registra("Frame2", Frame2);
    for (Opcao *o : {&Option1, &Option2, &Option3})
        o->Container = &Frame2;
    registra("Option1", Option1);
    registra("Option2", Option2);
    registra("Option3", Option3);
    registra("Opcoes", Opcoes);
    registra("Panel3D2", Panel3D2);
    registra("Gauge1", Gauge1);
    registra("Label3", Label3);
    registra("RotuloImpressora", RotuloImpressora);
    registra("Image1", Image1);
    registra("Timer1", Timer1);
    registra("Arquivo", Arquivo);
    registra("Conf_Vexa", Conf_Vexa);
    registra("MOpSoft", MOpSoft);
    registra("Importa", Importa);
    registra("Sair", Sair);
    registra("Cadastro", Cadastro);
    registra("Bank", Bank);
    registra("subChequeNormal", subChequeNormal);
    registra("subChequeTransferencia", subChequeTransferencia);
    registra("Favor", Favor);
    registra("Cidad", Cidad);
    registra("CpoX", CpoX);
    registra("Layout", Layout);
    registra("Impressao", Impressao);
    registra("Imp_Cheque", Imp_Cheque);
    registra("Imp_ChequeTransf", Imp_ChequeTransf);
    registra("ch_pr", ch_pr);
    registra("CopiaCheque", CopiaCheque);
    registra("Verso", Verso);
    registra("Relat", Relat);
    registra("Ajuda", Ajuda);
    registra("Topicos", Topicos);
    registra("Sobre_T", Sobre_T);

    liga("Text1", Evento::Change, [this](int i) { Text1_Change(i); });
    liga("Text1", Evento::GotFocus, [this](int i) { Text1_GotFocus(i); });
    liga("Text1", Evento::LostFocus, [this](int i) { Text1_LostFocus(i); });
    ligaTecla("Text1", Evento::KeyDown, [this](int i, int &k, int s) { Text1_KeyDown(i, k, s); });
    liga("Text2", Evento::Change, [this](int i) { Text2_Change(i); });
    liga("Text2", Evento::GotFocus, [this](int i) { Text2_GotFocus(i); });
    // A click in a back line is never a reason to check a front field.
    liga("Text2", Evento::Click, [this](int) { this->sessao.ValidaCampos = 0; });
    ligaTecla("Text2", Evento::KeyDown, [this](int i, int &k, int s) { Text2_KeyDown(i, k, s); });
    liga("TxtCpo", Evento::GotFocus, [this](int i) { TxtCpo_GotFocus(i); });
    liga("TxtCpo", Evento::LostFocus, [this](int i) { TxtCpo_LostFocus(i); });
    ligaTecla("TxtCpo", Evento::KeyDown, [this](int i, int &k, int s) { TxtCpo_KeyDown(i, k, s); });
    liga("Opcoes", Evento::Enter, [this](int i) { Opcoes_Enter(i); });
    liga("Opcoes", Evento::Click, [this](int i) { Opcoes_Click(i); });
    liga("Option1", Evento::Click, [this](int) { Option_Click(1); });
    liga("Option2", Evento::Click, [this](int) { Option_Click(2); });
    liga("Option3", Evento::Click, [this](int) { Option_Click(4); });
    liga("Timer1", Evento::Timer, [this](int) { Timer1_Timer(); });
    liga("Sair", Evento::Click, [this](int) { Sair_Click(); });
    liga("Importa", Evento::Click, [this](int) { ImportaVexaAntigo(this->sessao, this->desktop); });
    liga("Imp_Cheque", Evento::Click, [this](int) { Opcoes_Click(0); });
    liga("Verso", Evento::Click, [this](int) { Opcoes_Click(1); });
    liga("CpoX", Evento::Click, [this](int) { abre(telas::CmpExtra); });
    liga("Topicos", Evento::Click, [this](int) { this->desktop.Ajuda("Conteudo"); });

    // The commands whose screens open without blocking this one.
    liga_tela(Relat, telas::Relato);
    liga_tela(ch_pr, telas::ChePrz);
    liga_tela(CopiaCheque, telas::CmpCopia);
    liga_tela(Imp_ChequeTransf, telas::ChequeTransf);
    liga_tela(Conf_Vexa, telas::Configura);
    liga_tela(MOpSoft, telas::OpSoft);
    liga_tela(subChequeNormal, telas::Bancos);
    liga_tela(subChequeTransferencia, telas::BancTrans);
    liga_tela(Favor, telas::Favorec);
    liga_tela(Cidad, telas::Cidade);
    liga_tela(Layout, telas::Script);
    liga_tela(Sobre_T, telas::Sobre);
    Opcoes[2].Enabled = Relat.Enabled;
    Opcoes[5].Enabled = ch_pr.Enabled;
    Opcoes[6].Enabled = CopiaCheque.Enabled;
    Opcoes[7].Enabled = Imp_ChequeTransf.Enabled;
}

Main::~Main() {
    if (sessao.Gauge1 == &Gauge1) sessao.Gauge1 = nullptr;
}

void Main::liga_tela(MenuItem &item, const QString &nome) {
    item.Enabled = tela_existe(nome);
    // The copy is the one of these that checks the cheque first.
    if (&item == &CopiaCheque) {
        liga(ref(item).Nome, Evento::Click, [this](int) { Opcoes_Click(6); });
        return;
    }
    liga(ref(item).Nome, Evento::Click, [this, nome](int) { abre(nome); });
}

Tela *Main::abre(const QString &nome) {
    return abre_tela(sessao, desktop, nome);
}

// --- start and stop

void Main::Form_Load() {
    if (!linhaComando_.trimmed().isEmpty()) ParametrosCheque = LeLinhaComando(linhaComando_);
    if (VerificaInstancia()) {
        entregue_ = true;
        Unload();
        return;
    }
    // The purges ask their questions; a request that comes meanwhile waits for the start.
    ++ocupado_;
    IniciaSessao();
    ExpurgaCheques(sessao, desktop);
    ExpurgaCopias(sessao, desktop);
    --ocupado_;
    if (temPedido_) atende_pedidos();
}

bool Main::VerificaInstancia() {
    instancia_ = std::make_unique<Instancia>(sessao.CaminhoApp);
    QMap<int, QString> campos;
    for (int i = 0; i < ParametrosCheque.size(); ++i)
        if (!ParametrosCheque[i].isEmpty()) campos.insert(i, ParametrosCheque[i]);
    if (instancia_->EntregaAoPrimeiro(campos)) return true;
    instancia_->aoReceber = [this](const QMap<int, QString> &c) { RecebePedido(c); };
    instancia_->Escuta();
    return false;
}

void Main::RecebePedido(const QMap<int, QString> &campos) {
    for (auto it = campos.begin(); it != campos.end(); ++it)
        pedido_[it.key()] = it.value();
    temPedido_ = true;
    // A message box of a command or of another request lets this one in: served from there it
    // would change the fields under the command, and a flood would stack boxes without end.
    if (ocupado_ == 0) atende_pedidos();
}

void Main::atende_pedidos() {
    ++ocupado_;
    while (temPedido_) {
        const QMap<int, QString> campos = std::exchange(pedido_, {});
        temPedido_ = false;
        for (auto it = campos.begin(); it != campos.end(); ++it)
            if (it.key() >= 0 && it.key() < ParametrosCheque.size())
                ParametrosCheque[it.key()] = it.value();
        AplicaParametros(*this);
        desktop.Mostra(*this);
        Refresh();
    }
    --ocupado_;
}

void Main::IniciaSessao() {
    CheckBox.Value = inicia_configuracoes(sessao) ? 1 : 0;
    if (!sessao.Impressora) sessao.Impressora = cria_impressora(sessao);
    RotuloImpressora.Caption = "Impressora: " + sessao.Impressora->Descricao();
    LimpaTela();
    desktop.Mostra(*this);

    const QString formato = LeGravaIni(sessao.CaminhoIni, "Opcoes", "ConfiguraData", "");
    if (formato != "-2") {
        const int digitos = int(Val(formato));
        Opcao *opcao = digitos == 4   ? &Option3
                       : digitos == 2 ? &Option2
                       : digitos == 1 ? &Option1
                                      : nullptr;
        if (opcao) {
            for (Opcao *o : {&Option1, &Option2, &Option3})
                o->Value = o == opcao ? 1 : 0;
            Option_Click(digitos);
        }
    }
    le_opcoes_numericas(sessao);
    AplicaParametros(*this);
    SetFocus("Text1", 0);
    Refresh();
}

void Main::Form_Unload() {
    // A copy that only handed its request over never read the settings it would write.
    if (entregue_) return;
    grava_in_rel(sessao, CheckBox.Value != 0);
}

void Main::Form_Activate() {
    const RefControle foco = Foco();
    if (foco.Nome == "Text1") Text1_GotFocus(foco.Index);
}

void Main::Sair_Click() {
    grava_in_rel(sessao, CheckBox.Value != 0);
    desktop.Encerra(0);
}

void Main::Timer1_Timer() {
    Image1.Visible = false;
    if (sessao.FaseInicio > 1) {
        sessao.FaseInicio = 0;
        Timer1.Interval = 10000;
        if (Tela *sobre = desktop.Aberta(telas::Sobre)) sobre->Unload();
        PrimeiraVez(sessao, desktop, [this] { abre(telas::Configura); });
    }
    if (sessao.FaseInicio == 1) sessao.FaseInicio = 2;
    const QString figura = sessao.CaminhoApp + (sessao.MostraLogo ? "/Qorna.bmp" : "/tolg01.bmp");
    sessao.MostraLogo = sessao.MostraLogo ? 0 : 1;
    if (QFileInfo::exists(figura)) Image1.Picture = figura;
    Image1.Visible = true;
}

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
    CarregaFrente();
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
    const bool existe = ExisteCodigo(sessao, campo.Text, TabBancos) != 0;
    if (existe) Label1[6].Caption = NomeBanco(sessao, campo.Text);
    FechaTabelas(sessao, 1, 0, 0, 0);
    if (existe) return true;
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
        LeGravaIni(sessao.CaminhoIni, secao, chave, campo.Text.isEmpty() ? " " : campo.Text);
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

// --- the cheque

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

void Main::Opcoes_Click(int Index) {
    // Requests that come while a command runs wait for its end (see RecebePedido).
    ++ocupado_;
    comando(Index);
    --ocupado_;
    if (ocupado_ == 0 && temPedido_) atende_pedidos();
}

void Main::comando(int Index) {
    switch (Index) {
    case 0:
        if (!ValidaCheque()) return;
        if (ImprimeCamposExtras(sessao, desktop, TextosExtras()) != 1) {
            abre(telas::CmpExtra);
            return;
        }
        ImprimeFrente(*this, true);
        SetFocus("Text1", 0);
        break;
    case 1:
        ImprimeVerso(*this);
        SetFocus("Text2", 0);
        break;
    case 2:
        abre(telas::Relato);
        break;
    case 3:
        LimpaFrente();
        SetFocus("Text1", 0);
        break;
    case 4:
        LimpaVerso();
        SetFocus("Text2", 0);
        break;
    case 5:
        abre(telas::ChePrz);
        break;
    case 6:
        if (ValidaCheque()) abre(telas::CmpCopia);
        break;
    case 7:
        abre(telas::ChequeTransf);
        break;
    default:
        break;
    }
}

void Main::Option_Click(int Digitos) {
    envia_formato_data(sessao, Digitos);
}

} // namespace vexa
