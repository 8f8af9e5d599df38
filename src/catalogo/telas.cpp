#include "catalogo/telas.h"

#include "cheque/cheprz.h"
#include "cheque/extra.h"
#include "cheque/main.h"
#include "cheque/transf.h"
#include "copy/ajustescript.h"
#include "copy/cmpcopia.h"
#include "copy/script.h"
#include "registers/ajusta.h"
#include "registers/ajustatransf.h"
#include "registers/bancos.h"
#include "registers/banctrans.h"
#include "registers/cidade.h"
#include "registers/favorec.h"
#include "registers/pesquisa.h"
#include "registers/saida.h"
#include "reports/excluirel.h"
#include "reports/filtro.h"
#include "reports/historico.h"
#include "reports/relato.h"
#include "settings/calibra.h"
#include "settings/configura.h"
#include "settings/copias.h"
#include "settings/opsoft.h"
#include "settings/sobre.h"

namespace vexa {

namespace {
template <class T> std::unique_ptr<Tela> cria(Sessao &s, Desktop &d) {
    return std::make_unique<T>(s, d);
}
} // namespace

const std::map<QString, FabricaTela> &fabricas_telas() {
    static const std::map<QString, FabricaTela> fabricas = {
        // The entry screen opened by the program's start has the start's arguments; one made
        // here has none.
        {telas::Main,
         [](Sessao &s, Desktop &d) -> std::unique_ptr<Tela> {
             return std::make_unique<Main>(s, d, QString());
         }},
        {telas::CmpExtra, cria<CmpExtra>},
        {telas::Bancos, cria<Bancos>},
        {telas::Ajusta, cria<Ajusta>},
        {telas::Favorec, cria<Favorec>},
        {telas::Cidade, cria<Cidade>},
        {telas::Pesquisa, cria<Pesquisa>},
        {telas::Saida, cria<Saida>},
        {telas::Relato, cria<Relato>},
        {telas::ExcluiRel, cria<ExcluiRel>},
        {telas::Filtro, cria<Filtro>},
        {telas::ChePrz, cria<ChePrz>},
        {telas::ChequeTransf, cria<ChequeTransf>},
        {telas::BancTrans, cria<BancTrans>},
        {telas::AjustaChequeTransferencia, cria<AjustaChequeTransferencia>},
        {telas::Script, cria<Script>},
        {telas::AjusteScript, cria<AjusteScript>},
        {telas::CmpCopia, cria<CmpCopia>},
        {telas::Configura, cria<Configura>},
        {telas::OpSoft, cria<OpSoft>},
        {telas::Sobre, cria<Sobre>},
        {telas::HistoricoCheque, cria<HistoricoCheque>},
        {telas::Calibra, cria<Calibra>},
        {telas::Copias, cria<Copias>},
    };
    return fabricas;
}

bool tela_existe(const QString &nome) {
    return fabricas_telas().count(nome) != 0;
}

std::unique_ptr<Tela> cria_tela(const QString &nome, Sessao &s, Desktop &d) {
    const auto f = fabricas_telas().find(nome);
    return f == fabricas_telas().end() ? nullptr : f->second(s, d);
}

Tela *abre_tela(Sessao &s, Desktop &d, const QString &nome, bool modal,
                const std::function<void(Tela &)> &prepara) {
    std::unique_ptr<Tela> tela = cria_tela(nome, s, d);
    if (!tela) return nullptr;
    if (prepara) prepara(*tela);
    return abre_tela(s, d, std::move(tela), modal);
}

} // namespace vexa
