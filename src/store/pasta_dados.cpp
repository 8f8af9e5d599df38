#include "store/pasta_dados.h"

#include "core/ini.h"
#include "store/bancos_padrao.h"
#include "store/tabelas.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryFile>

namespace vexa {

QString escolhe_pasta_dados(const QString &padrao) {
    const QString ambiente = qEnvironmentVariable("VEXA_DADOS").trimmed();
    if (!ambiente.isEmpty()) return QDir::cleanPath(QFileInfo(ambiente).absoluteFilePath());
    QString chave = LeGravaIni(padrao + "/VEXA.INI", "Sistema", "PastaDados", "").trimmed();
    if (chave == "-2" || chave.isEmpty()) return QDir::cleanPath(padrao);
    if (chave == "~" || chave.startsWith("~/")) chave = QDir::homePath() + chave.mid(1);
    return QDir::cleanPath(QDir(padrao).absoluteFilePath(chave));
}

QString verifica_pasta_dados(const QString &pasta) {
    QTemporaryFile teste(pasta + "/VEXA.teste.XXXXXX");
    if (QDir().mkpath(pasta) && teste.open()) return {};
    return QStringLiteral("A pasta de dados \"%1\" não pode ser usada: o programa não consegue "
                          "criar nem gravar arquivos nela.\n\nVerifique o disco e a pasta "
                          "indicada em VEXA_DADOS ou na chave PastaDados da seção Sistema do "
                          "VEXA.INI.")
        .arg(QDir::toNativeSeparators(pasta));
}

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
