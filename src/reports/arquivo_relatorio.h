#pragma once
// The files the operator names from the report screen (the general report, the lists, the
// spreadsheets).
#include "core/desktop.h"

#include <QString>

namespace vexa {

// The save dialog with one filter and "Todos os Arquivos"; the extension is added to a name
// without one. Empty on Cancel.
QString pede_arquivo(Desktop &d, const QString &titulo, const QString &filtro,
                     const QString &extensao);
// The message for a file that could not be written, naming it.
void avisa_arquivo_nao_gravado(Desktop &d, const QString &caminho);

// The save dialog with the text filter, ".txt" added to a name without an extension, and the
// text written whole: UTF-8 with its mark, so that a word processor or a spreadsheet reads
// every accent as typed. False when nothing was written: the dialog was cancelled, or the
// write failed (then after a message that names the file).
bool grava_arquivo_relatorio(Desktop &d, const QString &titulo, const QString &texto);

} // namespace vexa
