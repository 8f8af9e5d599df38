#include "core/sessao.h"

#include "core/conversoes.h"
#include "core/ini.h"
#include "core/relogio.h"

#include <QDir>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>
#include <limits>

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
    // The leading number of the text: "12 dias" is 12, a text without one is 0.
    const double v = std::nearbyint(Val(lido));
    return qint16(std::clamp(v, double(std::numeric_limits<qint16>::min()),
                             double(std::numeric_limits<qint16>::max())));
}

} // namespace vexa
