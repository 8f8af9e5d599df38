#pragma once
// The painting of the system printer's pages, for paper, a PDF and the screen alike. It lives in
// a library of its own (vexa_sistema, graphics and printing), which the program installs at
// start with define_impressor_sistema(imprime_sistema).
#include "printer/impressora_sistema.h"

#include <QStringList>

class QPainter;

namespace vexa {

// One page on a painter whose unit is the device's pixel, pxPorMm of them to a millimetre.
// Contorno draws the cheque's outline, light, as the preview shows it.
void pinta_pagina(QPainter &p, const PaginaSistema &pagina, double pxPorMm, bool contorno);

// A job at true scale on the named system printer (empty: the default one), or into the PDF
// file it names: 0 taken, 482 no such printer, 1 refused.
int imprime_sistema(const TrabalhoSistema &trabalho);

// The printers the system knows, by name.
QStringList impressoras_sistema();

} // namespace vexa
