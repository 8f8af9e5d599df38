// Cancelling every cheque of a 250,000-row report list in the register, from the report
// screen, as the operator confirms "Todos" with "Banco de Dados".
#include "medidas.h"

#include "core/desktop_roteiro.h"
#include "core/sessao.h"
#include "reports/excluirel.h"
#include "reports/relato.h"
#include "store/tabelas.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

using namespace vexa;
using namespace vexa::bench;

namespace {

void mede_cancelamento() {
    QTemporaryDir pasta;
    roda_filho("enche", {pasta.path()});
    Sessao s(pasta.path());
    DesktopRoteiro d;
    auto *relato = static_cast<Relato *>(d.Abre(std::make_unique<Relato>(s, d)));
    if (!relato) return;
    const int linhas = relato->List1.ListCount();
    QElapsedTimer relogio;
    relogio.start();
    relato->Clica("SSCommand4");
    auto *e = static_cast<ExcluiRel *>(d.Aberta("ExcluiRel"));
    if (!e) return;
    e->Clica("RadioBox01", 1);
    d.Respostas = {Resposta::Yes}; // "Confirma o cancelamento?"
    e->Clica("BtnCmd", 0);
    const double ms = relogio.nsecsElapsed() / 1e6;
    relato->ListaCompletaLog();
    int marcadas = 0;
    for (int i = 0; i < relato->List1.ListCount(); ++i)
        marcadas += relato->List1.List(i).startsWith("C |");
    std::printf("Cancelar \"Todos\" no registro, lista de %d linhas:\n", linhas);
    std::printf("  tempo             %8.0f ms\n", ms);
    std::printf("  linhas marcadas   %8d\n\n", marcadas);
}

const bool registrada = registra_medida("6 cancelamento", mede_cancelamento);

} // namespace
