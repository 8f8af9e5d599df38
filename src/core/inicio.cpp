#include "core/inicio.h"

#include "core/conversoes.h"
#include "core/grava_ini.h"
#include "core/ini.h"
#include "core/restos.h"

namespace vexa {

bool inicia_configuracoes(Sessao &s) {
    // This copy holds the folder now: what a write cut short left in it is put right first.
    recupera_restos(s);
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
    const Resposta r = d.MsgBox(
        "Bem-vindo ao Vexa Plus!\n\n"
        "Antes do primeiro cheque, ligue a impressora de cheques ao computador e escolha a "
        "porta em que ela está ligada.\n\n"
        "Pressione OK para abrir a configuração da impressora.",
        Botoes::OKCancel, "Bem-vindo ao Vexa Plus", Icone::Informacao, Resposta::OK);
    if (r != Resposta::OK) return;
    if (abreConfiguracao) abreConfiguracao();
    GravaIni(s, d, "Config", "FirstTime", "*%*");
}

void grava_in_rel(Sessao &s, bool marcado) {
    LeGravaIni(s.CaminhoIni, "Sistema", "InRel", marcado ? "1" : "0");
}

} // namespace vexa
