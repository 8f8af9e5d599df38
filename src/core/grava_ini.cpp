#include "core/grava_ini.h"
#include "core/ini.h"

namespace vexa {

bool GravaIni(Sessao &s, Desktop &d, const QString &Secao, const QString &Chave,
              const QString &Valor) {
    if (LeGravaIni(s.CaminhoIni, Secao, Chave, Valor) == QLatin1String("1")) return true;
    AvisaIniNaoGravado(d);
    return false;
}

void AvisaIniNaoGravado(Desktop &d) {
    d.MsgBox("A configuração não foi gravada no arquivo VEXA.INI: o disco está cheio ou o "
             "arquivo não aceita gravação. O arquivo continua como estava.",
             Botoes::OK, "Erro", Icone::Exclamacao);
}

} // namespace vexa
