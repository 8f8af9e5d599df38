#include "core/sessao.h"

#include "core/ini.h"
#include "core/relogio.h"
#include "printer/vexa32.h"
#include "store/basedados.h"

#include <QDir>
#include <QStandardPaths>

namespace vexa {

Sessao::Sessao() : Sessao(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)) {}

Sessao::Sessao(const QString &caminhoApp) {
    DefineCaminho(caminhoApp);
    DefineHoje();
}

Sessao::~Sessao() = default;

void Sessao::DefineCaminho(const QString &caminhoApp) {
    CaminhoApp = QDir::cleanPath(caminhoApp);
    QDir().mkpath(CaminhoApp);
    CaminhoIni = CaminhoApp + "/VEXA.INI";
}

void Sessao::DefineHoje() {
    Hoje6 = hoje().toString("ddMMyy");
    MesAno = Hoje6.mid(2, 4);
}

qint16 Sessao::LeNumero(const QString &secao, const QString &chave, qint16 padrao) const {
    const QString lido = LeGravaIni(CaminhoIni, secao, chave, "");
    if (lido == "-2") return padrao;
    bool ok = false;
    const int n = lido.trimmed().toInt(&ok);
    // A value that isn't a number reads as 0, as a numeric conversion of text does.
    return ok ? qint16(n) : qint16(0);
}

} // namespace vexa
