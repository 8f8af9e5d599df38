#include "store/pasta_dados.h"

#include "store/bancos_padrao.h"
#include "store/tabelas.h"

#include <QFileInfo>
#include <QLockFile>

namespace vexa {

void prepara_pasta_dados(Sessao &s) {
    // Held only while the folder is looked at and filled; a dead holder's lock is taken over.
    QLockFile trava(s.CaminhoApp + "/VEXA.preparo");
    if (!trava.tryLock(30000)) return;
    const QString base = s.CaminhoApp + "/VEXA.db";
    if (QFileInfo::exists(s.CaminhoIni) || QFileInfo::exists(base)) return;
    // The database first, made aside and renamed whole: a start cut short before it leaves
    // the folder new, and one cut short after it leaves a folder whose settings take their
    // defaults, never a settings file without its database.
    cria_base_dados(s);
    if (QFileInfo::exists(base)) grava_configuracao_padrao(s);
}

} // namespace vexa
