#pragma once
// What the simulated printer puts on paper: the characters it reads in the bytes it is sent,
// and the numbered sheets in its papel/ folder (NNNNNN.txt, the UTF-8 text of a sheet, and
// NNNNNN.pdf beside it).
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vexa {

// What the printer reads in a text: its Windows-1252 bytes taken as code page 850, up to the
// zero byte that ends a C string (nothing after it reaches the library).
QString da_impressora(const QString &texto);

// What a sheet is printed on: a cheque form (a cheque face, a transfer cheque) or a plain page
// (a copy, a list).
enum class Formulario { Cheque, Pagina };

// Paints the PDF of a sheet (its lines, in one monospaced font) and gives its bytes; empty when
// it can't paint. The program installs one at start; without one a sheet is printed as text
// alone, so that the printer layer needs no graphics library.
using PintorPdf = QByteArray (*)(const QStringList &linhas, const QString &titulo,
                                 Formulario formulario);
void define_pintor_pdf(PintorPdf pintor);

class Papel {
  public:
    explicit Papel(const QString &pasta);

    QString Pasta() const { return pasta_; }
    // NNNNNN.txt, or with another extension ("pdf").
    QString Arquivo(int numero, const QString &extensao = QStringLiteral("txt")) const;
    // The first number after ultimo whose sheet isn't on paper yet: a sheet the operator kept
    // from an earlier memory is never overwritten.
    int proximo(int ultimo) const;

    // A cheque face: its text and, with a painter installed, its PDF. False when either
    // didn't reach the disk whole; nothing of the sheet is left then.
    bool grava_face(int numero, const QStringList &face);
    // A piece of a running text sheet, added at its end. False when it didn't reach the disk
    // whole; the sheet keeps what it had.
    bool acrescenta(int numero, const QString &texto);
    // The PDF beside a sheet, titled nome and the sheet's number; true without a painter that
    // can paint. False when it didn't reach the disk whole: no PDF is left then, and the text
    // stays as it is.
    bool grava_pdf(int numero, const QStringList &linhas, Formulario formulario,
                   const QString &nome);
    // Takes a sheet off the paper: its memory could not record it.
    void descarta(int numero);

  private:
    QString pasta_;
};

} // namespace vexa
