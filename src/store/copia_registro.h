#pragma once
// Moving a whole register between the engines: the desk's file VEXA.db into an empty database
// of the office's server when the office starts sharing one register, and the server's
// register back into a file. Every row of every table goes, in one transaction on the target,
// which is kept only when each table there counts the rows the origin has.
#include "store/motor.h"

#include <QList>
#include <QString>

namespace vexa {

struct ContagemTabela {
    QString Tabela;
    qint64 Origem = 0, Destino = 0;
};

struct CopiaRegistro {
    bool Copiado = false;
    // Why nothing was copied, in the operator's words.
    QString Erro;
    QList<ContagemTabela> Contagens;
    // The lines the command prints: the count of each table and the verdict.
    QString Relatorio() const;
};

// Copies the register of de into para. A target that holds anything beyond the preset banks of
// a new register is refused untouched; a file target that doesn't exist is made.
CopiaRegistro copia_registro(const ConfigBase &de, const ConfigBase &para);

// "--copia-registro DE PARA": each a file, "postgresql://usuario@servidor:porta/base", or the
// word "servidor" for the server VEXA.INI names. Prints the counts; 0 when copied, 1 otherwise.
int copia_registro_comando(const Sessao &s, const QStringList &Parametros);

} // namespace vexa
