#pragma once
// The views of the screens, by the screens' names: the widget side of the catalogue whose
// models live in catalogo/telas. A view builds its widgets inside the window it is given
// (central widget, menus), named after the model's controls.
#include "core/tela.h"

#include <QMainWindow>
#include <functional>
#include <map>

namespace vexa::ui {

using FabricaVista = std::function<void(Tela &tela, QMainWindow &janela)>;

const std::map<QString, FabricaVista> &fabricas_vistas();
// The view for a screen name; an empty function for a name without one.
FabricaVista vista_de(const QString &nome);

} // namespace vexa::ui
