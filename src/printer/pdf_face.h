#pragma once
// The PDF of a sheet the simulated printer printed, painted with the graphics library. It
// lives in a library of its own (vexa_pdf), so that only the program, the tests and the tools
// that show a sheet on a page link graphics; they install it at start with
// define_pintor_pdf(pdf_face).
#include "printer/papel.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vexa {

// The lines in one monospaced font, embedded once. On a cheque form (215 x 83 mm) the grid of
// a cheque face, 120 columns by 22 lines, fills the form; on a plain page (A4) a grid of 80
// columns by 66 lines, one page for every 66 lines. A wider line makes the grid wider and
// the letters smaller, so that nothing is cut. Empty without a graphical application:
// painting needs its fonts.
QByteArray pdf_face(const QStringList &linhas, const QString &titulo,
                    Formulario formulario = Formulario::Cheque);

} // namespace vexa
