#pragma once
// The printed lists of issued cheques: the rows of the report's list, Normal (one cheque a
// line) or Compacto (several a line), for the cheque printer, a text file or the system
// printer. They print the rows' text as the list shows it, page by page with a head, the
// page's totals and a foot.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QString>
#include <QStringList>
#include <functional>

namespace vexa {

enum class FormatoLista { Normal, Compacto };
// 0 the cheque printer, 1 a text file, 2 the system printer.
enum class DestinoLista { Vexa = 0, Arquivo = 1, Windows = 2 };

// What a list sends, in order: one text for each page the rows fill, and the last text,
// which a list whose rows fill their pages exactly sends with a head alone. Linhas are the
// 138-character rows of the report's list; Hoje6 the day of the run (ddmmyy); NumChkPgRel
// the cheques of a page on the system printer.
QStringList envios_lista(const QStringList &Linhas, FormatoLista Formato, DestinoLista Destino,
                         const QString &Hoje6, int NumChkPgRel);

// Sends the report's rows to the target chosen, with the questions and messages of each
// target. andamento is told the row being read (the list shows the progress); when it answers
// false the run stops with nothing sent.
void envia_lista(Sessao &s, Desktop &d, const QStringList &Linhas, FormatoLista Formato,
                 DestinoLista Destino, const std::function<bool(int)> &andamento = {});

} // namespace vexa
