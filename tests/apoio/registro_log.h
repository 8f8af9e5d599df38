#pragma once
// The register of issued cheques as a test reads it back: every row of Log, field by field.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QList>
#include <QMap>
#include <QString>

namespace vexa::teste {

// Every row of Log in the order of its Index, each field by name; empty when the database
// can't be opened (the test fails then).
QList<QMap<QString, QString>> linhas_do_log(Sessao &s, Desktop &d);

} // namespace vexa::teste
