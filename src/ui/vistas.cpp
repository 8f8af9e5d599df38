#include "ui/vistas.h"

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

const std::map<QString, FabricaVista> &FabricasVistas() {
    static const std::map<QString, FabricaVista> vistas = {
        {telas::Main, CriaVistaMain},         {telas::CmpExtra, CriaVistaCmpExtra},
        {telas::Bancos, CriaVistaBancos},     {telas::Ajusta, CriaVistaAjusta},
        {telas::Favorec, CriaVistaFavorec},   {telas::Cidade, CriaVistaCidade},
        {telas::Pesquisa, CriaVistaPesquisa}, {telas::Saida, CriaVistaSaida},
    };
    return vistas;
}

FabricaVista VistaDe(const QString &nome) {
    const auto v = FabricasVistas().find(nome);
    return v == FabricasVistas().end() ? FabricaVista() : v->second;
}

} // namespace vexa::ui
