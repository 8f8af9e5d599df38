#include "settings/versao.h"

namespace vexa {

QString VersaoPrograma() {
    return QStringLiteral(VEXA_VERSAO);
}

QString DataCompilacao() {
    return QStringLiteral(VEXA_DATA_COMPILACAO);
}

LinhaComando le_linha_comando(const QStringList &argumentos) {
    LinhaComando l;
    QStringList campos;
    for (qsizetype i = 0; i < argumentos.size(); ++i) {
        const QString &a = argumentos[i];
        if (!a.startsWith("--")) {
            campos << a;
            continue;
        }
        // The options that do one job and end: what follows them is theirs.
        if (a == "--importa" && i + 1 < argumentos.size()) {
            l.Acao = LinhaComando::Pedido::Importar;
            l.Parametros = {argumentos[i + 1]};
            return l;
        }
        if (a == "--copia-registro" && i + 2 < argumentos.size()) {
            l.Acao = LinhaComando::Pedido::CopiarRegistro;
            l.Parametros = argumentos.mid(i + 1, 2);
            return l;
        }
        if (a == "--cheque-teste" && i + 1 < argumentos.size()) {
            l.Acao = LinhaComando::Pedido::ChequeTeste;
            l.Parametros = argumentos.mid(i + 1, 2);
            return l;
        }
        if (a == "--help" || a == "--ajuda") {
            l.Acao = LinhaComando::Pedido::Ajuda;
            l.Resposta = QStringLiteral(
                "Uso: vexa [PEDIDO]\n"
                "Preenche e imprime cheques na impressora de documentos Vexa Plus e mantém o\n"
                "registro dos cheques emitidos.\n"
                "\n"
                "PEDIDO preenche a tela do cheque, sem imprimir, com os campos que outro\n"
                "programa entrega: /B banco, /V valor, /F favorecido, /L cidade, /D data,\n"
                "/C número do cheque. Exemplo: vexa \"/B001/V1234,50/FMaria/D050399\"\n"
                "Com o programa já aberto, o pedido vai para a cópia aberta.\n"
                "\n"
                "Opções:\n"
                "  --help           mostra esta ajuda e termina\n"
                "  --version        mostra a versão e termina\n"
                "  --importa PASTA  importa o VEXA.MDB, o VEXA.INI e o ChequeTransf.txt do\n"
                "                   programa antigo e termina\n"
                "  --cheque-teste ARQUIVO.pdf [BANCO]\n"
                "                   imprime o cheque de teste da impressora do sistema, com a\n"
                "                   calibração atual, nesse PDF e termina\n"
                "  --copia-registro DE PARA\n"
                "                   copia o registro inteiro de DE para PARA, que deve estar\n"
                "                   vazio, confere as linhas de cada tabela e termina. DE e PARA\n"
                "                   são um arquivo (VEXA.db), \"servidor\" (o do VEXA.INI) ou\n"
                "                   postgresql://usuario@servidor:porta/base\n"
                "\n"
                "A pasta de dados é a do usuário; a variável de ambiente VEXA_DADOS, ou a\n"
                "chave PastaDados da seção Sistema do VEXA.INI dessa pasta, indica outra.\n");
            return l;
        }
        if (a == "--version" || a == "--versao") {
            l.Acao = LinhaComando::Pedido::Versao;
            l.Resposta = QStringLiteral("Vexa Plus %1 (compilado em %2)\n")
                             .arg(VersaoPrograma(), DataCompilacao());
            return l;
        }
        // An option the program doesn't know is never taken as the fields of a cheque.
        l.Acao = LinhaComando::Pedido::Erro;
        l.Resposta = QStringLiteral("vexa: opção desconhecida: %1\n"
                                    "Use \"vexa --help\" para ver as opções.\n")
                         .arg(a);
        return l;
    }
    l.Campos = campos.join(' ');
    return l;
}

} // namespace vexa
