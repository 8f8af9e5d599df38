#pragma once
// The rules on where the fields of a layout may lie. Each set guards one moment: the sending
// of a bank layout to the printer, and the OK of each graphic adjust. All rules of a set are
// evaluated, none stops the others; the caller shows the set's message once.
#include "core/desktop.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace vexa {

// Layouts whose code is 995 or above are the printer's own test forms: no rule applies.
inline constexpr int CodigoSemRegras = 995;
bool codigo_sem_regras(const QString &Codigo);

// The words a failed set shows: one message box with OK.
struct AvisoRegras {
    QString Texto;
    QString Titulo;
    Icone Icone_ = Icone::Nenhum;
};
void mostra_aviso(Desktop &d, const AvisoRegras &aviso);

// How many of the conditions hold (each one a failed rule).
int conta_falhas(std::initializer_list<bool> falhas);

// Before a bank layout goes to the printer. Posicoes: L1..L5, C1..C8 as the register screen
// holds them, three digits each. True when no rule fails or the code is free of rules.
bool VerificaPosicoes(const QString &Codigo, const QStringList &Posicoes);
extern const AvisoRegras AvisoPosicoes;

// The OK of the bank layout's graphic adjust: the tops T and left edges X of its eight boxes
// (amount, words 1, words 2, payee, city, day, month, year), in screen units. The five lines
// run strictly downwards, and city, day, month, year strictly to the right.
bool verifica_ordem_ajuste(const QList<int> &T, const QList<int> &X);
extern const AvisoRegras AvisoAjuste;

// The OK of the transfer layout's graphic adjust, over its seven boxes (amount, words 1,
// words 2, city, date, branch, account): their tops T and left edges X in screen units, and
// the line and column each shows. The three text lines run strictly downwards; the four items
// of the two shared lines keep their columns apart, by at least 13 columns from the date to
// the branch on one line, 19 from the branch to the account and 15 from the city to the date.
bool verifica_ordem_transf(const QList<int> &T, const QList<int> &X, const QList<int> &Linhas,
                           const QList<int> &Colunas);
extern const AvisoRegras AvisoTransf;
// The OK of the copy layout's graphic adjust, on the 80 columns of a plain sheet. The fields
// that are checked, each with the width it takes on the page; the date stands on the city's
// line. The amount in words and the comment are free.
enum class CampoCopia { Valor, Favorecido, Cidade, Dia, Mes, Ano, Banco, NumeroCheque };
struct PosicaoCopia {
    int Linha = 0;
    int Coluna = 0;
};
// The first pair out of order: the field to correct and the words that say why.
struct FalhaCopia {
    CampoCopia Culpado;
    QString Texto;
};
inline const QString TituloLayoutCopia = QStringLiteral("Layout de Cópia");
QString nome_campo_copia(CampoCopia campo);
int largura_campo_copia(CampoCopia campo);
// Posicoes indexed by CampoCopia. Pairs on different lines are not compared, except the date
// parts against the city and each other. Empty when every pair is in order.
std::optional<FalhaCopia> VerificaPosicaoCopia(const QList<PosicaoCopia> &Posicoes);

} // namespace vexa
