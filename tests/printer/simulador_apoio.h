#pragma once
// What the simulated printer remembers, in one text, so that two memories compare whole; and
// the operations that change it.
#include "printer/impressao.h"
#include "printer/simulador.h"

#include <QStringList>
#include <functional>

namespace vexa::teste {

inline QString resumo(const Simulador &imp) {
    QStringList r;
    for (auto [codigo, posicoes] : imp.Bancos().asKeyValueRange())
        r << codigo + "=" + posicoes;
    for (auto [codigo, nome] : imp.Favorecidos().asKeyValueRange())
        r << codigo + ":" + nome.left(20) + " (" + QString::number(nome.size()) + ")";
    r << imp.MoedaSingular() << imp.MoedaPlural() << QString::number(imp.DigitosAno());
    for (const auto &i : imp.Relatorio())
        r << QString::number(i.Papel) + (i.Cancelado ? " C " : " - ") + i.Banco + " " + i.Valor;
    r << QString::number(imp.UltimoPapel());
    return r.join(u'\n');
}

// One operation that changes the memory, on a printer that has printed a cheque and holds the
// payee 01; on a full disk, the blocks left free and the answers with and without room.
struct OperacaoMemoria {
    const char *nome;
    std::function<qint16(Simulador &)> faz;
    int livres = 0;
    qint16 falha = Simulador::MemoriaFalhou, feito = Simulador::Feito;
};

// A layout of the thirteen positions.
inline const QString LayoutTeste = "001,002,003,004,005,006,007,008,009,010,011,012,013";

inline QList<OperacaoMemoria> operacoes_memoria() {
    using S = Simulador;
    return {{"IncluiBanco", [](S &s) { return s.IncluiBanco("999", LayoutTeste); }},
            {"IncluiFavorecido", [](S &s) { return s.IncluiFavorecido("02", "Bia"); }},
            {"ExcluiUmFavorecido", [](S &s) { return s.ExcluiFavorecido("01"); }},
            {"ExcluiTodos", [](S &s) { return s.ExcluiFavorecido(""); }},
            {"AlteraMoeda", [](S &s) { return s.AlteraMoeda("Peso", "Pesos"); }},
            {"FormatoDaData", [](S &s) { return s.ComandoTX(comando_formato_data(1), 5); }},
            {"CancelaUltimo", [](S &s) { return s.CancelaRel("U"); }},
            {"CancelaTodos", [](S &s) { return s.CancelaRel("*"); }},
            {"Cheque",
             [](S &s) { return s.ImprimeCheque("001", "7,00", "Bia", "Lins", "02/01/24", ""); }},
            {"FolhaDeTexto", [](S &s) { return s.TolvaneTX("Lista\r\n"); }}};
}

} // namespace vexa::teste
