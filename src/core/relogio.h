#pragma once
// The one place the program asks for today's date and time, so that tests can fix them.
#include <QDate>
#include <QDateTime>

namespace vexa {

// Today's date: the system's, or the one fixed by fixa_hoje.
QDate hoje();
QDateTime agora();
// Fixes the date of the run (tests); an invalid date goes back to the system clock.
void fixa_hoje(const QDate &data);

// Resolves a two-digit year to the century that puts it within 80 years back and
// 20 years ahead of today.
int ano_completo(int ano2);

} // namespace vexa
