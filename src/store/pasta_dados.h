#pragma once
// The data folder's first start: the files the program is delivered with.
#include "core/sessao.h"

namespace vexa {

// A folder that holds neither VEXA.INI nor VEXA.db is new: it gets VEXA.db with its tables
// and the preset banks, then VEXA.INI as delivered (FirstTime=1 in section Config). A folder
// that holds either file has been used, and nothing is made in it: a database that went
// missing there stays missing, and the screens that need it say so, rather than an empty one
// taking its place unseen. Copies that start together prepare the folder one at a time.
void prepara_pasta_dados(Sessao &s);

} // namespace vexa
