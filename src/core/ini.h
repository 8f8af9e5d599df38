#pragma once
// VEXA.INI, read and written as the classic private-profile routines do.
#include <QString>
#include <QStringList>

namespace vexa {

// An empty Valor reads the key; "*%*" writes the key with an empty value; anything else
// writes Valor. A read gives the value (at most 159 characters, without an ending zero
// character) or "-2" when the key is missing or its value begins with "-2". A write gives
// "1" when the whole new file reached the disk, and "-1" when it did not: the file then stays
// byte for byte as it was.
QString LeGravaIni(const QString &CaminhoIni, const QString &Secao, const QString &Chave,
                   const QString &Valor);

// The keys of a section, in the file's order (the first of two equal keys); none when the
// file or the section is missing.
QStringList ChavesIni(const QString &CaminhoIni, const QString &Secao);

} // namespace vexa
