#pragma once
// What the simulated printer remembers, in one text, so that two memories compare whole.
#include "printer/simulador.h"

#include <QStringList>

namespace vexa::teste {

inline QString resumo(const Simulador &imp) {
    QStringList r;
    for (auto [codigo, posicoes] : imp.Bancos().asKeyValueRange())
        r << codigo + "=" + posicoes;
    for (auto [codigo, nome] : imp.Favorecidos().asKeyValueRange())
        r << codigo + ":" + nome.left(20) + " (" + QString::number(nome.size()) + ")";
    r << imp.MoedaSingular() << imp.MoedaPlural() << QString::number(imp.DigitosAno());
    for (const auto &i : imp.Relatorio())
        r << QString::number(i.Papel) + (i.Cancelado ? " C " : " - ") + i.Banco + " " + i.Valor;
    r << QString::number(imp.UltimoPapel());
    return r.join(u'\n');
}

} // namespace vexa::teste
