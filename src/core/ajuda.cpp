#include "core/ajuda.h"

#include "core/telas.h"

#include <map>

namespace vexa {

QString topico_ajuda(const QString &tela) {
    static const std::map<QString, QString> topicos = {
        {telas::Main, "cheque"},
        {telas::CmpExtra, "verso#extra"},
        {telas::Bancos, "cadastros#bancos"},
        {telas::Ajusta, "cadastros#ajuste"},
        {telas::Favorec, "cadastros#favorecidos"},
        {telas::Cidade, "cadastros#cidades"},
        {telas::Pesquisa, "cadastros#pesquisa"},
        {telas::Saida, "cadastros#listas"},
        {telas::Relato, "relatorio"},
        {telas::Filtro, "relatorio#filtro"},
        {telas::ExcluiRel, "relatorio#cancelar"},
        {telas::ChePrz, "prazo"},
        {telas::ChequeTransf, "transferencia"},
        {telas::BancTrans, "transferencia#layouts"},
        {telas::AjustaChequeTransferencia, "transferencia#ajuste"},
        {telas::Script, "copia#layouts"},
        {telas::AjusteScript, "copia#ajuste"},
        {telas::CmpCopia, "copia#enviar"},
        {telas::Configura, "configuracoes#configuracoes"},
        {telas::OpSoft, "configuracoes#opcoes"},
        {telas::Sobre, AjudaConteudo},
    };
    const auto t = topicos.find(tela);
    return t == topicos.end() ? AjudaConteudo : t->second;
}

} // namespace vexa
