#pragma once
// The program's version and build date, and the options of its command line.
#include <QString>
#include <QStringList>

namespace vexa {

// "6.2.0", from the build.
QString VersaoPrograma();
// The day the program was built, "dd/mm/aaaa".
QString DataCompilacao();

// What the command line asks. The arguments are otherwise another program's request, the
// fields of a cheque ("/B001/V1234,50"); an option begins with "--".
struct LinhaComando {
    enum class Pedido {
        Abrir,
        Ajuda,
        Versao,
        Importar,
        ChequeTeste,
        CopiarRegistro,
        Erro
    } Acao = Pedido::Abrir;
    QString Campos;   // the request, for Abrir
    QString Resposta; // what the program prints and then ends with, for Ajuda, Versao, Erro
    // The old program's folder, for Importar; the PDF file and, if given, the bank, for
    // ChequeTeste; the register to copy and where to, for CopiarRegistro.
    QStringList Parametros;
};
LinhaComando le_linha_comando(const QStringList &argumentos);

} // namespace vexa
