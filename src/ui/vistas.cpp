#include "ui/vistas.h"

#include <map>

namespace vexa::ui {

// Each view's builder, defined in its own file.
void CriaVistaMain(Tela &tela, QMainWindow &janela);

FabricaVista VistaDe(const QString &nome) {
    static const std::map<QString, FabricaVista> vistas = {
        {"Main", CriaVistaMain},
    };
    const auto v = vistas.find(nome);
    return v == vistas.end() ? FabricaVista() : v->second;
}

} // namespace vexa::ui
