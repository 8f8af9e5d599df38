#pragma once
// The views of the screens, by screen name. A view builds its widgets inside the window it
// is given (central widget, menus), named after the model's controls.
#include "core/tela.h"

#include <QMainWindow>
#include <functional>

namespace vexa::ui {

using FabricaVista = std::function<void(Tela &tela, QMainWindow &janela)>;

// The view for a screen name; an empty function when the screen has no view yet.
FabricaVista VistaDe(const QString &nome);

} // namespace vexa::ui
