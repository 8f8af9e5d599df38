#pragma once
// The data folder: where it is, and its first start with the files the program is delivered
// with.
#include "core/sessao.h"

namespace vexa {

// The data folder of a run. The environment variable VEXA_DADOS names it when set; otherwise
// the key PastaDados of section Sistema, in the VEXA.INI of the user's standard folder
// (padrao), may name another one (a second disk, a synchronised folder); otherwise it is
// padrao. A relative name in the key is taken from padrao, and "~/" is the home folder.
QString escolhe_pasta_dados(const QString &padrao);

// Empty when the program can make the folder and write in it; otherwise the message that says
// it can't. A folder that vanished (a disk not mounted) is told, never replaced by an empty one
// elsewhere.
QString verifica_pasta_dados(const QString &pasta);

// A folder that holds neither VEXA.INI nor VEXA.db is new: it gets VEXA.db with its tables
// and the preset banks, then VEXA.INI as delivered (FirstTime=1 in section Config). A folder
// that holds either file has been used, and nothing is made in it: a database that went
// missing there stays missing, and the screens that need it say so, rather than an empty one
// taking its place unseen. Copies that start together prepare the folder one at a time.
void prepara_pasta_dados(Sessao &s);

} // namespace vexa
