#pragma once
// Writes that reach the disk whole or not at all. A file that holds the operator's state is
// never left half old and half new, nor empty because the disk filled up: the answer is
// false and the old bytes stay as they were.
#include <QByteArray>
#include <QString>

namespace vexa {

// Replaces the file with conteudo: written beside it, flushed to the disk, then renamed over
// it. False (and the old file untouched) when any step fails.
bool grava_inteiro(const QString &caminho, const QByteArray &conteudo);

// Appends conteudo to the file (created when missing) and flushes it to the disk. When the
// write doesn't reach the disk whole, the file is cut back to its former size and the answer
// is false.
bool acrescenta_inteiro(const QString &caminho, const QByteArray &conteudo);

} // namespace vexa
