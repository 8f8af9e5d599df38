#pragma once
// The help page of each screen, which F1 opens: a page of the help and, after "#", the place
// on it ("cadastros#bancos").
#include <QString>

namespace vexa {

// The contents page, which the help menu opens.
inline const QString AjudaConteudo = QStringLiteral("Conteudo");

// The help topic of a screen by its name; the contents for a name without a page of its own.
QString topico_ajuda(const QString &tela);

} // namespace vexa
