#pragma once
// The banks a fresh install knows: the database and the simulated printer both leave the
// factory with them, every one under the default layout, and each with a transfer layout and
// a copy layout of the same code and name, so that no screen starts empty.
#include "core/sessao.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

namespace vexa {

// The default layout, L1 to L5 and C1 to C8, three digits each.
QStringList posicoes_padrao();

// The transfer layout a new bank starts from: L1..L7, C1..C7, the columns those of the
// graphic adjust's grid.
QStringList posicoes_padrao_transf();

// The line of section ChequeTransf: the fourteen positions, three characters each (below 100
// through the mask "000", from 100 on as typed), joined by commas, then "    ; " and the first
// 30 characters of the name.
QString linha_transf(const QStringList &Posicoes, const QString &Nome);

// The copy layout of a preset bank: l1..l8 then c1..c11, a page that reads as the cheque
// (bank and number on top, the amount, its words, the payee, city and date, the comment).
QStringList posicoes_copia_padrao();

// Code (three digits) and name of each preset bank, in code order.
QList<QPair<QString, QString>> bancos_padrao();

// A row of the delivered database: its table and its fields in the table's order.
struct LinhaPadrao {
    QString Tabela;
    QStringList Campos;
};
// Each preset bank's rows in Bancos, Transferencia and Script.
QList<LinhaPadrao> linhas_padrao();

// The delivered VEXA.INI (the first-run mark and each preset bank's transfer layout), then
// the list file of the transfer banks. False when the settings file did not reach the disk.
bool grava_configuracao_padrao(const Sessao &s);

} // namespace vexa
