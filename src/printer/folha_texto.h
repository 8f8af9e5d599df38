#pragma once
// A sheet of running text as the printer fills it, from the characters it reads in each
// FormataTX and TolvaneTX (already in its own code page, da_impressora):
//   - CR doesn't print, LF ends a line, other control characters but TAB are left out;
//   - ESC and the character after it are a command and print nothing: ESC "I" turns inverted
//     printing on, and the next one off; ESC "@" resets the printer, which ends inverted
//     printing too; any other command is ignored. The printer reads a stream: an ESC at the
//     end of one text takes the first character of the next.
//   - Inverted, every line comes out upside down, so that the sheet, turned as the operator
//     takes it out, reads from the last line printed to the first. The sheet is kept as the
//     operator reads it: the lines of an inverted run stand in the reverse of the order they
//     came in, where the run began. A line left unfinished when the run ends is a line of
//     its own.
#include "printer/papel.h"

#include <QString>
#include <QStringList>

namespace vexa {

class FolhaTexto {
  public:
    // Reads a text and gives what reaches the paper now, in reading order: nothing of an
    // inverted run until it ends.
    QString recebe(const QString &lido);
    // The document ends: an inverted run still open stops, and its lines are given.
    QString encerra();

    bool Invertida() const { return invertida_; }
    // Everything given so far: the sheet as the operator reads it.
    const QString &Texto() const { return texto_; }
    // Its lines, without the empty one after the last LF.
    QStringList Linhas() const;

    // The form the sheet is printed on is the one of the first text that asks for it.
    Formulario Forma() const { return forma_; }
    void define_forma(Formulario forma);

  private:
    QString desinverte();

    QString texto_;
    QString retido_; // the inverted run so far, in the order it came
    bool invertida_ = false;
    bool escape_ = false;
    Formulario forma_ = Formulario::Pagina;
    bool formaDefinida_ = false;
};

} // namespace vexa
