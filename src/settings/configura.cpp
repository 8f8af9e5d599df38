#include "settings/configura.h"

#include "catalogo/telas.h"
#include "core/conversoes.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/teclas.h"
#include "printer/impressao.h"
#include "printer/vexa32.h"
#include "settings/calibra.h"

namespace vexa {

namespace {

// The support line of the self-test page until the office writes its own number under
// TelefoneSuporte in section Sistema.
const QString SuporteAPreencher = QStringLiteral("Suporte Técnico: (__) ____-____");

QString linha(int brancos, const QString &texto, int avancos) {
    return QString(brancos, u' ') + texto + QString(avancos, u'\n');
}

} // namespace

QString pagina_auto_teste(const QString &Porta, const QString &TelefoneSuporte) {
    return linha(35, "AUTO - TESTE", 2) + linha(27, "Impressora de Cheques - Vexa Plus", 3) +
           linha(35, "TOLVANE S/A.", 2) + linha(32, TelefoneSuporte, 3) + QString(2, u'\n') +
           linha(20, "Comunicação OK - Impressora instalada na " + Porta, 1);
}

Configura::Configura(Sessao &sessao, Desktop &desktop)
    : Tela(telas::Configura, "Configurações", sessao, desktop) {
    for (int n = 1; n <= 10; ++n)
        cboPorta.AddItem("COM" + QString::number(n));
    Label1.Container = cboPorta.Container = Command3D7.Container = &Frame1;
    for (auto *c : std::initializer_list<Controle *>{&Label2[0], &Label2[1], &Text1[0], &Text1[1],
                                                     &Command3D1})
        c->Container = &Frame2;
    for (auto *c : std::initializer_list<Controle *>{&Label3[0], &Label3[1], &Text2[0], &Text2[1],
                                                     &Command3D2})
        c->Container = &Frame3;
    Label4.Container = Text3.Container = Option3D2.Container = Command3D4.Container = &Frame4;
    Command3D9.Container = Command3D10.Container = &Frame5;
    registra("Frame1", Frame1);
    registra("Label1", Label1);
    registra("cboPorta", cboPorta);
    registra("Command3D7", Command3D7);
    registra("Frame2", Frame2);
    registra("Label2", Label2);
    registra("Text1", Text1);
    registra("Command3D1", Command3D1);
    registra("Frame3", Frame3);
    registra("Label3", Label3);
    registra("Text2", Text2);
    registra("Command3D2", Command3D2);
    registra("Frame4", Frame4);
    registra("Label4", Label4);
    registra("Text3", Text3);
    registra("Option3D2", Option3D2);
    registra("Command3D4", Command3D4);
    registra("Frame5", Frame5);
    registra("Command3D9", Command3D9);
    registra("Command3D10", Command3D10);
    registra("SSCommand1", SSCommand1);
    ordem_ = {"cboPorta",   "Command3D7", "Text1(0)",    "Text1(1)",  "Command3D1",
              "Text2(0)",   "Text2(1)",   "Command3D2",  "Text3",     "Option3D2",
              "Command3D4", "Command3D9", "Command3D10", "SSCommand1"};

    liga("Command3D7", Evento::Click, [this](int) { Command3D7_Click(); });
    liga("Command3D1", Evento::Click, [this](int) { Command3D1_Click(); });
    liga("Command3D2", Evento::Click, [this](int) { Command3D2_Click(); });
    liga("Command3D4", Evento::Click, [this](int) { Command3D4_Click(); });
    liga("Command3D9", Evento::Click, [this](int) { Command3D9_Click(); });
    liga("Command3D10", Evento::Click,
         [this](int) { abre_tela(this->sessao, this->desktop, telas::Calibra); });
    liga("Option3D2", Evento::Click, [this](int) { Option3D2_Click(); });
    liga("SSCommand1", Evento::Click, [this](int) { Unload(); });
    liga("Text1", Evento::GotFocus, [this](int i) { Campo_GotFocus(Text1[i]); });
    liga("Text2", Evento::GotFocus, [this](int i) { Campo_GotFocus(Text2[i]); });
    liga("Text3", Evento::GotFocus, [this](int) { Campo_GotFocus(Text3); });
    liga("Text2", Evento::Change, [this](int i) { Campo_Change(Text2[i], i == 0 ? 2 : 48); });
    liga("Text3", Evento::Change, [this](int) {
        // A code typed in takes the place of "all".
        if (Text3.Text != "*") Option3D2.Value = 0;
        Campo_Change(Text3, 2);
    });
    liga("Text2", Evento::LostFocus, [this](int i) {
        if (i == 0) Codigo_LostFocus(Text2[0]);
    });
    liga("Text3", Evento::LostFocus, [this](int) { Codigo_LostFocus(Text3); });
    for (const char *campo : {"Text1", "Text2", "Text3", "cboPorta"})
        ligaTecla(campo, Evento::KeyDown, [this](int, int &k, int) { Campo_KeyDown(k); });
}

void Configura::Form_Load() {
    QString porta = LeGravaIni(sessao.CaminhoIni, "Sistema", "port", "").left(4);
    if (porta == "-2") {
        porta = "COM2";
        LeGravaIni(sessao.CaminhoIni, "Sistema", "port", porta);
    }
    sessao.PortaImpressora = porta;
    cboPorta.ListIndex = int(cboPorta.Itens.lista().indexOf(porta));
    cboPorta.Text = cboPorta.List(cboPorta.ListIndex);

    const auto moeda = [this](const char *chave, const char *padrao) {
        QString nome = LeGravaIni(sessao.CaminhoIni, "Sistema", chave, "");
        if (nome == "-2") {
            nome = padrao;
            LeGravaIni(sessao.CaminhoIni, "Sistema", chave, nome);
        }
        return nome;
    };
    Text1[0].Text = moeda("m_sg", "Real");
    Text1[1].Text = moeda("m_pl", "Reais");
    SetFocus("cboPorta");
}

void Configura::Command3D7_Click() {
    if (!sessao.Impressora) return;
    Vexa32 &imp = *sessao.Impressora;
    const QString porta = cboPorta.List(cboPorta.ListIndex);
    imp.FechaPorta();
    if (porta.isEmpty() || imp.IniciaPorta(porta) == 0) {
        desktop.MsgBox("Erro na configuração da porta de comunicação.", Botoes::OK, "Configurações",
                       Icone::Critico);
    } else {
        // The port answered: this run prints through it even when the file refuses to keep
        // it, and only a kept port is a success.
        sessao.PortaImpressora = porta;
        if (GravaIni(sessao, desktop, "Sistema", "port", porta))
            desktop.MsgBox("Porta configurada com sucesso.", Botoes::OK,
                           "Configuração da Porta Serial");
    }
    imp.FechaPorta();
}

void Configura::recusa(const QString &mensagem, const QString &titulo, Texto &campo) {
    desktop.MsgBox(mensagem, Botoes::OK, titulo);
    SetFocus(campo);
}

void Configura::Command3D1_Click() {
    const QString titulo = "Alteração da Moeda";
    if (Text1[0].Text.isEmpty())
        return recusa("O nome da moeda no singular não pode ser vazio.", titulo, Text1[0]);
    if (Text1[1].Text.isEmpty())
        return recusa("O nome da moeda no plural não pode ser vazio.", titulo, Text1[1]);
    Qorn_CMD(sessao, desktop, 3, {Text1[0].Text.trimmed(), Text1[1].Text.trimmed(), {}});
}

void Configura::Command3D2_Click() {
    const QString titulo = "Cadastro de Favorecido";
    if (Text2[0].Text.isEmpty())
        return recusa("O código do favorecido não pode ser vazio.", titulo, Text2[0]);
    if (Text2[1].Text.isEmpty())
        return recusa("O nome do favorecido não pode ser vazio.", titulo, Text2[1]);
    Qorn_CMD(sessao, desktop, 1,
             {Text2[0].Text, ConverteTexto(Text2[1].Text.left(48).trimmed()), {}});
}

void Configura::Command3D4_Click() {
    if (Text3.Text.isEmpty() && !Option3D2.Value)
        return recusa("O código do favorecido não pode ser vazio ou a opção 'Todos' deve estar "
                      "assinalada.",
                      "Exclusão de Favorecidos", Text3);
    Qorn_CMD(sessao, desktop, 2, {Option3D2.Value ? QStringLiteral("*") : Text3.Text, {}, {}});
}

void Configura::Command3D9_Click() {
    if (desktop.MsgBox("Insira o papel na impressora.", Botoes::OKCancel,
                       "Auto-teste na impressora", Icone::Informacao) != Resposta::OK)
        return;
    QString suporte = LeGravaIni(sessao.CaminhoIni, "Sistema", "TelefoneSuporte", "");
    if (suporte == "-2" || suporte.trimmed().isEmpty()) suporte = SuporteAPreencher;
    EnviaTextoImpressora(sessao, desktop, pagina_auto_teste(sessao.PortaImpressora, suporte), 3);
}

void Configura::Option3D2_Click() {
    Option3D2.Value = 1;
    Text3.Text = "*";
}

void Configura::Campo_Change(Texto &campo, int limite) {
    if (campo.Text.size() <= limite) return;
    campo.Text.truncate(limite);
    desktop.MsgBox("Tamanho Máximo deste campo...", Botoes::OK, "Erro");
}

void Configura::Codigo_LostFocus(Texto &campo) {
    if (campo.Text.isEmpty() || (&campo == &Text3 && campo.Text == "*")) return;
    campo.Text = eh_numerico(campo.Text)
                     ? Format(QString::number(valor_numerico(campo.Text), 'f', 0), "00")
                     : QString();
}

void Configura::Campo_GotFocus(Texto &campo) {
    campo.SelecionaTudo = true;
}

void Configura::Campo_KeyDown(int &KeyCode) {
    if (KeyCode != tecla::Enter) return;
    KeyCode = 0;
    const int i = int(ordem_.indexOf(Foco().texto()));
    for (int passo = 1; passo <= ordem_.size(); ++passo) {
        const RefControle proximo = RefControle::de(ordem_[(i + passo) % ordem_.size()]);
        Controle *c = controle(proximo);
        if (c && Focavel(*c)) return SetFocus(proximo);
    }
}

} // namespace vexa
