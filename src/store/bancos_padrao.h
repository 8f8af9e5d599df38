#pragma once
// The banks a fresh install knows: the database and the simulated printer both leave the
// factory with them, every one under the default layout.
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace vexa {

// The default layout, L1 to L5 and C1 to C8, three digits each.
QStringList posicoes_padrao();

// Code (three digits) and name of each preset bank, in code order.
QList<QPair<QString, QString>> bancos_padrao();

} // namespace vexa
