#pragma once
// The names of the program's screens. A screen is opened, found and bound to its view by
// its name, so every name is written once, here: a misspelt name fails to build instead of
// opening nothing.
#include <QString>

namespace vexa::telas {

inline const QString Main = QStringLiteral("Main");
inline const QString CmpExtra = QStringLiteral("CmpExtra");
inline const QString Bancos = QStringLiteral("Bancos");
inline const QString Ajusta = QStringLiteral("Ajusta");
inline const QString Favorec = QStringLiteral("Favorec");
inline const QString Cidade = QStringLiteral("Cidade");
inline const QString Pesquisa = QStringLiteral("Pesquisa");
inline const QString Saida = QStringLiteral("Saida");
inline const QString Relato = QStringLiteral("Relato");
inline const QString Filtro = QStringLiteral("Filtro");
inline const QString ExcluiRel = QStringLiteral("ExcluiRel");
inline const QString ChePrz = QStringLiteral("ChePrz");
inline const QString ChequeTransf = QStringLiteral("ChequeTransf");
inline const QString BancTrans = QStringLiteral("BancTrans");
inline const QString AjustaChequeTransferencia = QStringLiteral("AjustaChequeTransferencia");
inline const QString Script = QStringLiteral("Script");
inline const QString AjusteScript = QStringLiteral("AjusteScript");
inline const QString CmpCopia = QStringLiteral("CmpCopia");
inline const QString Configura = QStringLiteral("Configura");
inline const QString OpSoft = QStringLiteral("OpSoft");
inline const QString Sobre = QStringLiteral("Sobre");
inline const QString HistoricoCheque = QStringLiteral("HistoricoCheque");

} // namespace vexa::telas
