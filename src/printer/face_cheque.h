#pragma once
// The face of a cheque as the simulated printer prints it: the grid of 120 columns by 22
// lines, each line right-trimmed.
//   - the amount in figures at L1/C1 between "#" marks, as sent: "#1.234,50#";
//   - the amount in words at L2/C2, broken at a blank where the line reaches the last
//     column; the rest at L3/C3, followed by a blank and "*" up to the last column (only "*"
//     when the words fit on the first line);
//   - the payee at L4/C4, the city at L5/C5, and on line L5 the day (two digits) at C5+C6,
//     the month's name at C5+C7 and the year at C5+C8, with 1, 2 or 4 digits;
//   - the extra fields at their own line and column, over what stands there.
// Text beyond the last column, and fields outside the grid, are not printed.
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace vexa {

constexpr int ColunasFace = 120;
constexpr int LinhasFace = 22;

// A text of ImprimeCampoX, already as the printer reads it.
struct CampoExtra {
    int Linha = 0, Coluna = 0;
    QString Texto;
};

// What a face needs besides the cheque's own texts: the bank's layout (L1 to L5 and C1 to C8,
// joined by commas), the currency's names and the year's digits.
struct ModeloFace {
    QString Posicoes;
    QString Singular = "Real", Plural = "Reais";
    int DigitosAno = 4;
};

// One printed field of a face: where the layout puts it on the grid (line and column from 1;
// it may fall outside the grid) and its text, cut at the grid's last column.
struct CampoFace {
    QString Nome;
    int Linha = 0, Coluna = 0;
    QString Texto;
};

// A layout the printer takes: 13 values of one to three digits, joined by commas.
bool posicoes_validas(const QString &posicoes);

// The fields of the face in the order they print, the extra fields last: the one composition
// of a face, on the simulated printer's grid and on a system printer in millimetres alike.
// Empty when the layout, the amount or the date can't be read.
QList<CampoFace> campos_face(const ModeloFace &modelo, const QString &Valor,
                             const QString &Favorecido, const QString &Cidade, const QString &Data,
                             const QMap<int, CampoExtra> &extras);

// The lines of the face. Payee and city come as sent (read in the printer's code page).
// Empty when the layout, the amount or the date can't be read.
QStringList compoe_face(const ModeloFace &modelo, const QString &Valor, const QString &Favorecido,
                        const QString &Cidade, const QString &Data,
                        const QMap<int, CampoExtra> &extras);

} // namespace vexa
