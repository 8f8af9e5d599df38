#pragma once
// The catalogue of screens: every screen the program knows, by its name, with the factory of
// its model. The views are registered by the same names on the widget side (ui/vistas), so a screen
// joins the program with one line here, one line there, and its model and view.
#include "core/tela.h"
#include "core/telas.h"

#include <functional>
#include <map>
#include <memory>

namespace vexa {

using FabricaTela = std::function<std::unique_ptr<Tela>(Sessao &, Desktop &)>;

const std::map<QString, FabricaTela> &fabricas_telas();
bool tela_existe(const QString &nome);
// A new model of the screen of that name; null for a name the program doesn't have.
std::unique_ptr<Tela> cria_tela(const QString &nome, Sessao &s, Desktop &d);

// Opens a screen by name. prepara runs on the new model before its load (the print dialog
// takes its total so). A screen whose load set FechaTela is closed again at once, the flag
// cleared and the result null; so is an unknown name.
Tela *abre_tela(Sessao &s, Desktop &d, const QString &nome, bool modal = false,
                const std::function<void(Tela &)> &prepara = {});

} // namespace vexa
