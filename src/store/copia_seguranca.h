#pragma once
// The backups of the data folder, in its folder backup/: the database VEXA.db with the purged
// cheques of VEXA-expurgo.db, VEXA.INI and the simulated printer's memory (impressora/, without
// the sheets it printed). One is made at the first start of each day and whenever the operator
// asks; the last 30 are kept.
//
// A backup is written under a temporary name and renamed only when whole: one cut short (the
// program killed, the disk full) never passes for a backup, and the older ones are never
// touched by it. The database is read through SQLite's online backup, which copies a
// consistent state of a database in use.
#include "core/desktop.h"
#include "core/sessao.h"

#include <QDateTime>
#include <QList>
#include <functional>

namespace vexa {

inline constexpr int CopiasGuardadas = 30;

struct CopiaSeguranca {
    QString Pasta;
    QDateTime Quando;
    bool AntesDeRestaurar = false; // the files a restore kept aside before it ran
    // "25/03/2024 08:15:02", and what it is when it isn't a plain backup.
    QString Descricao() const;
};

// Where the backups of the data folder lie.
QString pasta_copias(const Sessao &s);
// The whole backups, newest first.
QList<CopiaSeguranca> lista_copias(const Sessao &s);

// How a backup is written. The database goes over PaginasPorPasso pages at a time, and
// AposPasso runs after each step.
struct ModoCopia {
    int PaginasPorPasso = 4096;
    std::function<void()> AposPasso;
    bool AntesDeRestaurar = false;
};

// Makes a backup now: empty on success, otherwise why it failed (and nothing of it remains).
QString faz_copia(const Sessao &s, const ModoCopia &modo = {});

// The first start of a day makes a backup, unless one of today is there already. The operator
// hears of it only when it fails.
void copia_do_dia(const Sessao &s, Desktop &d);
// "Make a backup now": tells where it went, or why it failed.
void copia_agora(const Sessao &s, Desktop &d);
// Puts a backup back after the operator's Yes, once the current files are kept aside in a
// backup of their own. True when the data changed: the run must then end, since the screens
// and the printer still hold the state of before.
bool restaura_copia(Sessao &s, Desktop &d, const CopiaSeguranca &c);

} // namespace vexa
