#pragma once
// The PDF of a cheque face, painted with the graphics library. It lives in a library of its
// own (vexa_pdf), so that only the program, the tests and the tools that show a face on a page
// link graphics; they install it at start with define_pintor_pdf(pdf_face).
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vexa {

// The face's lines in one monospaced font, embedded once, on a page the size of a cheque.
// Empty without a graphical application: painting needs its fonts.
QByteArray pdf_face(const QStringList &face, const QString &titulo);

} // namespace vexa
