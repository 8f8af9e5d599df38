#include "core/inicio.h"

#include "core/conversoes.h"
#include "core/ini.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

namespace vexa {

bool inicia_configuracoes(Sessao &s) {
    s.TituloCfg = "0";
    s.MostraLogo = 1;

    bool inRel = true;
    // The numeric value decides: an empty value is 0 as much as "0" is.
    const QString rel = LeGravaIni(s.CaminhoIni, "Sistema", "InRel", "");
    if (rel != "-2" && Val(rel) == 0)
        inRel = false;
    else
        LeGravaIni(s.CaminhoIni, "Sistema", "InRel", "1");

    QString porta = LeGravaIni(s.CaminhoIni, "Sistema", "port", "").left(4);
    if (porta == "-2") {
        porta = "COM2";
        LeGravaIni(s.CaminhoIni, "Sistema", "port", porta);
    }
    s.PortaImpressora = porta;

    s.PeriodoRel = s.LeNumero("Opcoes", "PeriodoRelExc", 30);
    s.PeriodoCop = s.LeNumero("Opcoes", "PeriodoCopExc", 30);
    s.UsaInvertida = s.LeNumero("Opcoes", "UsarImpInv", 1);

    s.DefineHoje();
    s.ValidaCampos = 1;
    s.ResultadoPesquisa.clear();
    return inRel;
}

void le_opcoes_numericas(Sessao &s) {
    s.FechaTela = 0;
    s.FaseInicio = 1;
    s.NumeroObrigatorio = s.LeNumero("Opcoes", "NumCObrig", 1);
    s.ChequesPorPagina = s.LeNumero("Opcoes", "NumChkPgRel", 55);
}

void PrimeiraVez(Sessao &s, Desktop &d, const AbreConfiguracao &abreConfiguracao) {
    if (Val(LeGravaIni(s.CaminhoIni, "Config", "FirstTime", "")) != 1) return;
    const Resposta r = d.MsgBox("Para o correto funcionamento entre a impressora e o aplicativo,\n"
                                "verifique o cabo de conexão e pressione <ok> para acertar a "
                                "configuração!",
                                Botoes::OKCancel);
    if (r != Resposta::OK) return;
    d.MsgBox("Obs.: Caso altere a porta de comunicação, favor reiniciar aplicativo!", Botoes::OK,
             "Configuração da Vexa");
    ExecutaConfiguracao(s, d, abreConfiguracao);
    LeGravaIni(s.CaminhoIni, "Config", "FirstTime", "*%*");
}

int ExecutaConfiguracao(Sessao &s, Desktop &d, const AbreConfiguracao &abreConfiguracao) {
    // The configuration program is the printer maker's own; it is looked for beside the
    // data and beside the program, and started in a window of its own.
    const QStringList lugares = {s.CaminhoApp, QCoreApplication::applicationDirPath()};
    for (const QString &pasta : lugares) {
        const QFileInfo programa(pasta + "/" + ProgramaConfiguracao);
        if (programa.exists() && QProcess::startDetached(programa.absoluteFilePath(), {}, pasta))
            return 1;
    }
    const Resposta r =
        d.MsgBox(QStringLiteral("Aplicativo \"%1\" não encontrado!\n").arg(ProgramaConfiguracao),
                 Botoes::OKCancel, "Vexa not found!", Icone::Informacao);
    // Without the maker's program the operator still gets to the port and the printer's
    // settings: the program's own screen for them.
    if (r == Resposta::OK && abreConfiguracao) abreConfiguracao();
    return 1;
}

void grava_in_rel(Sessao &s, bool marcado) {
    LeGravaIni(s.CaminhoIni, "Sistema", "InRel", marcado ? "1" : "0");
}

} // namespace vexa
