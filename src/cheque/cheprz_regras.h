#pragma once
// The rules the fields of the post-dated screen share: the mask of its amounts, its settings
// section, which fields hold days, what a typed whole number is, and each field's size.
#include "core/conversoes.h"

#include <QString>
#include <optional>

namespace vexa::prazo {

inline const QString Mascara = "#,###,##0.00";
inline const QString Secao = "FrentePrazo";

// Text1(1) to Text1(12) hold the days of each instalment.
inline bool eh_periodo(int Index) {
    return Index >= 1 && Index <= 12;
}

// A whole number typed in a field of days or of instalments; none when it is no number, has
// decimals or is negative.
inline std::optional<int> inteiro_digitado(const QString &texto) {
    const auto valor = centavos(texto);
    if (!valor || *valor < 0 || *valor % 100 != 0) return std::nullopt;
    return int(*valor / 100);
}

// What each field of Text1 holds at most; a longer text is cut.
inline int maximo_text1(int Index) {
    return Index == 0 ? 10 : eh_periodo(Index) ? 3 : 8;
}

} // namespace vexa::prazo
