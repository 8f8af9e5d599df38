#include "settings/calibra.h"

#include "core/grava_ini.h"
#include "core/ini.h"
#include "printer/impressao.h"
#include "printer/impressora_sistema.h"

#include <cmath>
#include <optional>

namespace vexa {

namespace {

const QString Titulo = QStringLiteral("Impressora do Sistema");

QString mm(double v, int casas = 1) {
    return QString::number(v, 'f', casas).replace(u'.', u',');
}

std::optional<double> le_numero(const QString &texto, double minimo, double maximo) {
    bool ok = false;
    const double v = QString(texto).replace(u',', u'.').trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(v) || v < minimo || v > maximo) return std::nullopt;
    return v;
}

} // namespace

Calibra::Calibra(Sessao &sessao, Desktop &desktop) : Tela(telas::Calibra, Titulo, sessao, desktop) {
    for (Controle *c : std::initializer_list<Controle *>{&OptFolha[0], &OptFolha[1], &Label2[0],
                                                         &Label2[1], &TxtFolha[0], &TxtFolha[1]})
        c->Container = &Frame1;
    for (int i = 0; i < 4; ++i)
        Label3[i].Container = TxtAjuste[i].Container = &Frame2;
    registra("CheckUsar", CheckUsar);
    registra("Label1", Label1);
    registra("cboImpressora", cboImpressora);
    registra("Frame1", Frame1);
    registra("OptFolha", OptFolha);
    registra("Label2", Label2);
    registra("TxtFolha", TxtFolha);
    registra("Frame2", Frame2);
    registra("Label3", Label3);
    registra("TxtAjuste", TxtAjuste);
    registra("Command1", Command1);
    liga("cboImpressora", Evento::Click, [this](int) { cboImpressora_Click(); });
    liga("Command1", Evento::Click, [this](int i) { Command1_Click(i); });
}

void Calibra::Form_Load() {
    const ConfiguracaoSistema c = le_configuracao_sistema(sessao.CaminhoIni);
    CheckUsar.Value = LeGravaIni(sessao.CaminhoIni, "Sistema", "Impressora", "")
                          .trimmed()
                          .compare("Sistema", Qt::CaseInsensitive) == 0;
    for (const QString &nome : impressoras_conhecidas())
        cboImpressora.AddItem(nome);
    cboImpressora.Text = c.Impressora;
    cboImpressora.ListIndex = int(cboImpressora.Itens.lista().indexOf(c.Impressora));
    OptFolha[0].Value = c.TipoFolha == Folha::Cheque;
    OptFolha[1].Value = c.TipoFolha == Folha::A4;
    TxtFolha[0].Text = mm(c.FolhaX);
    TxtFolha[1].Text = mm(c.FolhaY);
    mostra_calibracao();
}

void Calibra::mostra_calibracao() {
    const Calibracao a = calibracao_do_texto(
        LeGravaIni(sessao.CaminhoIni, "Calibracao", chave_calibracao(cboImpressora.Text), ""));
    TxtAjuste[0].Text = mm(a.DeslocX);
    TxtAjuste[1].Text = mm(a.DeslocY);
    TxtAjuste[2].Text = mm(a.EscalaX * 100, 2);
    TxtAjuste[3].Text = mm(a.EscalaY * 100, 2);
}

void Calibra::cboImpressora_Click() {
    mostra_calibracao();
}

bool Calibra::grava() {
    struct Faixa {
        Texto *campo;
        double minimo, maximo;
        const char *nome;
    };
    const Faixa faixas[] = {
        {&TxtFolha[0], 0, LarguraA4 - LarguraCheque, "A posição do cheque na folha A4"},
        {&TxtFolha[1], 0, AlturaA4 - AlturaCheque, "A posição do cheque na folha A4"},
        {&TxtAjuste[0], -30, 30, "O deslocamento horizontal"},
        {&TxtAjuste[1], -30, 30, "O deslocamento vertical"},
        {&TxtAjuste[2], 90, 110, "A escala horizontal"},
        {&TxtAjuste[3], 90, 110, "A escala vertical"},
    };
    double v[6];
    for (int i = 0; i < 6; ++i) {
        const std::optional<double> n =
            le_numero(faixas[i].campo->Text, faixas[i].minimo, faixas[i].maximo);
        if (!n) {
            desktop.MsgBox(QString(faixas[i].nome) + " deve ser um número de " +
                               mm(faixas[i].minimo, 0) + " a " + mm(faixas[i].maximo, 0) + ".",
                           Botoes::OK, Titulo, Icone::Exclamacao);
            SetFocus(*faixas[i].campo);
            return false;
        }
        v[i] = *n;
    }
    const QString nome = cboImpressora.Text.trimmed();
    const Calibracao a{v[2], v[3], v[4] / 100, v[5] / 100};
    const QList<std::pair<QString, QString>> valores = {
        {"ChequeSistema|Folha", OptFolha[1].Value ? "A4" : "Cheque"},
        {"ChequeSistema|FolhaX", QString::number(v[0], 'f', 1)},
        {"ChequeSistema|FolhaY", QString::number(v[1], 'f', 1)},
        {"Sistema|ImpressoraSistema", nome.isEmpty() ? QStringLiteral("*%*") : nome},
        {"Calibracao|" + chave_calibracao(nome), texto_calibracao(a)},
    };
    for (const auto &[onde, valor] : valores) {
        const QStringList sc = onde.split(u'|');
        if (!GravaIni(sessao, desktop, sc[0], sc[1], valor)) return false;
    }
    // The choice of printer counts from the next print, and the entry screen shows it.
    const bool sistema = LeGravaIni(sessao.CaminhoIni, "Sistema", "Impressora", "")
                             .trimmed()
                             .compare("Sistema", Qt::CaseInsensitive) == 0;
    if (bool(CheckUsar.Value) != sistema || sistema) {
        if (!GravaIni(sessao, desktop, "Sistema", "Impressora",
                      CheckUsar.Value ? "Sistema" : "Simulador"))
            return false;
        sessao.Impressora = cria_impressora(sessao);
        if (Tela *principal = desktop.Aberta(telas::Main))
            if (Controle *rotulo = principal->controle("RotuloImpressora"))
                rotulo->Caption = "Impressora: " + sessao.Impressora->Descricao();
    }
    return true;
}

void Calibra::avisa(qint16 resultado, const QString &motivo) {
    if (resultado == 1) return;
    desktop.MsgBox(motivo.isEmpty() ? "Problemas com a impressao do cheque" : motivo, Botoes::OK,
                   Titulo + " (" + QString::number(resultado) + ")", Icone::Exclamacao);
}

void Calibra::Command1_Click(int Index) {
    if (Index == 3) return Unload();
    if (!grava()) return;
    if (Index == 2) {
        desktop.MsgBox("A configuração da impressora do sistema foi gravada.", Botoes::OK, Titulo,
                       Icone::Informacao);
        return;
    }
    const bool cheque = Index == 1;
    if (desktop.MsgBox(cheque ? "Insira um cheque em branco ou uma folha comum para o teste."
                              : "Insira uma folha comum: a página de calibração vai por cima de "
                                "um cheque de verdade.",
                       Botoes::OKCancel, Titulo, Icone::Informacao) != Resposta::OK)
        return;
    ImpressoraSistema impressora(sessao.CaminhoApp, sessao.CaminhoIni);
    if (cheque) {
        const qint16 r = impressora.ImprimeChequeTeste();
        return avisa(r, impressora.Motivo(r));
    }
    impressora.IniciaPorta(QString());
    const qint16 r = impressora.ImprimePaginas("Página de calibração",
                                               {pagina_calibracao(impressora.Configuracao())});
    impressora.FechaPorta();
    avisa(r, impressora.Motivo(r));
}

} // namespace vexa
