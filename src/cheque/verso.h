#pragma once
// The back of a cheque: its ten lines with a left margin of 15 blanks.
namespace vexa {

class Main;

// Trailing empty lines don't print, inner ones keep their place. A line that passes 80
// characters with its margin sends the whole back in the printer's wide mode (2).
void ImprimeVerso(Main &Tela);

} // namespace vexa
