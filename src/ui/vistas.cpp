#include "ui/vistas.h"

#include "settings/calibra.h"
#include "settings/copias.h"

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
void CriaVistaRelato(Tela &tela, QMainWindow &janela);
void CriaVistaExcluiRel(Tela &tela, QMainWindow &janela);
void CriaVistaFiltro(Tela &tela, QMainWindow &janela);
void CriaVistaChePrz(Tela &tela, QMainWindow &janela);
void CriaVistaChequeTransf(Tela &tela, QMainWindow &janela);
void CriaVistaBancTrans(Tela &tela, QMainWindow &janela);
void CriaVistaAjustaChequeTransferencia(Tela &tela, QMainWindow &janela);
void CriaVistaScript(Tela &tela, QMainWindow &janela);
void CriaVistaAjusteScript(Tela &tela, QMainWindow &janela);
void CriaVistaCmpCopia(Tela &tela, QMainWindow &janela);
void CriaVistaConfigura(Tela &tela, QMainWindow &janela);
void CriaVistaOpSoft(Tela &tela, QMainWindow &janela);
void CriaVistaSobre(Tela &tela, QMainWindow &janela);
void CriaVistaHistoricoCheque(Tela &tela, QMainWindow &janela);
void CriaVistaCalibra(Tela &tela, QMainWindow &janela);
void CriaVistaCopias(Tela &tela, QMainWindow &janela);

const std::map<QString, FabricaVista> &fabricas_vistas() {
    static const std::map<QString, FabricaVista> vistas = {
        {telas::Main, CriaVistaMain},
        {telas::CmpExtra, CriaVistaCmpExtra},
        {telas::Bancos, CriaVistaBancos},
        {telas::Ajusta, CriaVistaAjusta},
        {telas::Favorec, CriaVistaFavorec},
        {telas::Cidade, CriaVistaCidade},
        {telas::Pesquisa, CriaVistaPesquisa},
        {telas::Saida, CriaVistaSaida},
        {telas::Relato, CriaVistaRelato},
        {telas::ExcluiRel, CriaVistaExcluiRel},
        {telas::Filtro, CriaVistaFiltro},
        {telas::ChePrz, CriaVistaChePrz},
        {telas::ChequeTransf, CriaVistaChequeTransf},
        {telas::BancTrans, CriaVistaBancTrans},
        {telas::AjustaChequeTransferencia, CriaVistaAjustaChequeTransferencia},
        {telas::Script, CriaVistaScript},
        {telas::AjusteScript, CriaVistaAjusteScript},
        {telas::CmpCopia, CriaVistaCmpCopia},
        {telas::Configura, CriaVistaConfigura},
        {telas::OpSoft, CriaVistaOpSoft},
        {telas::Sobre, CriaVistaSobre},
        {telas::HistoricoCheque, CriaVistaHistoricoCheque},
        {telas::Calibra, CriaVistaCalibra},
        {telas::Copias, CriaVistaCopias},
    };
    return vistas;
}

FabricaVista vista_de(const QString &nome) {
    const auto v = fabricas_vistas().find(nome);
    return v == fabricas_vistas().end() ? FabricaVista() : v->second;
}

} // namespace vexa::ui
