#include "ui/vistas.h"

#include <map>

namespace vexa::ui {

// Each view's builder, defined in its own file.
void CriaVistaMain(Tela &tela, QMainWindow &janela);
void CriaVistaCmpExtra(Tela &tela, QMainWindow &janela);
void CriaVistaBancos(Tela &tela, QMainWindow &janela);
void CriaVistaAjusta(Tela &tela, QMainWindow &janela);
void CriaVistaFavorec(Tela &tela, QMainWindow &janela);
void CriaVistaCidade(Tela &tela, QMainWindow &janela);
void CriaVistaPesquisa(Tela &tela, QMainWindow &janela);
void CriaVistaSaida(Tela &tela, QMainWindow &janela);

FabricaVista VistaDe(const QString &nome) {
    static const std::map<QString, FabricaVista> vistas = {
        {"Main", CriaVistaMain},         {"CmpExtra", CriaVistaCmpExtra},
        {"Bancos", CriaVistaBancos},     {"Ajusta", CriaVistaAjusta},
        {"Favorec", CriaVistaFavorec},   {"Cidade", CriaVistaCidade},
        {"Pesquisa", CriaVistaPesquisa}, {"Saida", CriaVistaSaida},
    };
    const auto v = vistas.find(nome);
    return v == vistas.end() ? FabricaVista() : v->second;
}

} // namespace vexa::ui
