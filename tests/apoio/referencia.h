#pragma once
// Texts the program composes whole (a cheque face, a page of a list) are compared whole
// against reference files kept under tests/dados/.
#include <QString>
#include <QStringList>
#include <ostream>

namespace vexa::teste {

// The file's text read as UTF-8; empty when it can't be read.
QString le_utf8(const QString &caminho);

// The text against the reference file tests/dados/<nome>; a mismatch fails the test and lists
// the lines that differ (CR shown as "\r", so that line ends count too).
void confere_referencia(const QString &obtido, const QString &nome);

} // namespace vexa::teste

// QString and QStringList shown as text in the messages of failed expectations.
void PrintTo(const QString &texto, std::ostream *os);
void PrintTo(const QStringList &lista, std::ostream *os);
