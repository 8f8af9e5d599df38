#pragma once
// The rows of the report's list for a spreadsheet: a CSV as a spreadsheet set to Brazil reads
// it, and an OpenDocument spreadsheet where amounts are numbers and dates are dates.
#include "core/desktop.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <optional>

namespace vexa {

class RecordSet;

// The fields of Log each column of the sheet shows, in the order of the table on the screen
// (ColunaLog).
const QStringList &campos_planilha();
// Their headings.
const QStringList &titulos_planilha();

// The sheet's texts for rows read with campos_planilha(): the status spelt out, the amount with
// a decimal comma and no grouping, the date as dd/mm/aaaa.
QStringList celulas_planilha(const QStringList &campos);

// Each file whole, or nothing when the operator cancelled at a step of p (p may be null).
std::optional<QByteArray> csv_planilha(const QList<QStringList> &linhas, Progresso *p = nullptr);
std::optional<QByteArray> ods_planilha(const QList<QStringList> &linhas, Progresso *p = nullptr);

// A zip archive whose entries are stored as they are, in order (the first of an OpenDocument
// file must be its "mimetype", uncompressed).
QByteArray zip_guardado(const QList<QPair<QString, QByteArray>> &entradas);

// Asks for a file and writes the rows of the list, in its order, as CSV or as .ods. A
// cancelled export leaves no file.
enum class FormatoPlanilha { Csv, Ods };
void exporta_planilha(Desktop &d, const RecordSet &linhas, FormatoPlanilha formato);

} // namespace vexa
