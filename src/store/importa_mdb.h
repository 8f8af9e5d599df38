#pragma once
// The database of the old program (VEXA.MDB, a Jet file) read whole into VEXA.db: every row of
// its six tables, in one transaction that is kept only when every row the file declares was
// read and written. The old file is opened read-only and never written.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace vexa {

struct ImportacaoMdb {
    enum class Fim { Importado, Cancelado, Recusado };
    Fim fim = Fim::Recusado;
    // Why nothing was kept, one line each, in the operator's words.
    QStringList problemas;
    // Rows read from each table, in the order read.
    QList<QPair<QString, int>> linhas;
    // Rows kept as they stand whose value the program can't read: table, key, field, value.
    QStringList duvidosas;
    // Fields of the old file that this program has no place for, left out.
    QStringList ignorados;
    // Bank codes of the register that have no layout in Bancos, with how many cheques each.
    QStringList bancos_sem_leiaute;
    // The codes read from Bancos and Transferencia (their lines of VEXA.INI go with them).
    QStringList bancos, transferencias;
    // Banks of a new store's presets that the old file doesn't have, kept.
    int predefinidos_mantidos = 0;
};

// True when the store holds more than a new one does: a cheque, a payee, a city, a copy or
// transfer layout, or a bank that isn't one of the presets.
bool base_tem_dados(Sessao &s, Desktop &d);

// A consistent copy of the whole store in destino (which must not exist). False when it could
// not be written.
bool copia_base(Sessao &s, const QString &destino);

// Reads arquivoMdb into the store, one step of progresso per table. A store that holds data
// (base_tem_dados) is emptied first when substitui, and refused otherwise. The preset banks of
// a new store stay where the old file has no bank of their code. Nothing is kept unless the
// result is Importado.
ImportacaoMdb importa_mdb(Sessao &s, Desktop &d, const QString &arquivoMdb, Progresso &progresso,
                          bool substitui);

} // namespace vexa
