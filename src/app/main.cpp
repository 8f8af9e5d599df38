// Vexa Plus: fills in and prints cheques on the document printer and keeps their register.
#include "cheque/main.h"
#include "core/sessao.h"
#include "printer/papel.h"
#include "printer/pdf_face.h"
#include "settings/importa.h"
#include "settings/versao.h"
#include "store/copia_seguranca.h"
#include "store/pasta_dados.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"

#include <QApplication>
#include <QStandardPaths>
#include <cstdio>

int main(int argc, char *argv[]) {
    // --help and --version answer without a window; an unknown option is told, never taken
    // for the fields of a cheque. Anything else is another program's request.
    QStringList argumentos;
    for (int i = 1; i < argc; ++i)
        argumentos << QString::fromLocal8Bit(argv[i]);
    const vexa::LinhaComando pedido = vexa::le_linha_comando(argumentos);
    if (pedido.Acao == vexa::LinhaComando::Pedido::Ajuda ||
        pedido.Acao == vexa::LinhaComando::Pedido::Versao ||
        pedido.Acao == vexa::LinhaComando::Pedido::Erro) {
        const bool erro = pedido.Acao == vexa::LinhaComando::Pedido::Erro;
        std::fputs(pedido.Resposta.toLocal8Bit().constData(), erro ? stderr : stdout);
        return erro ? 2 : 0;
    }

    QApplication app(argc, argv);
    vexa::ui::prepara_aplicacao(app);
    vexa::define_pintor_pdf(vexa::pdf_face);
    const QString pasta = vexa::escolhe_pasta_dados(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    if (const QString erro = vexa::verifica_pasta_dados(pasta); !erro.isEmpty()) {
        vexa::ui::DesktopQt().MsgBox(erro, vexa::Botoes::OK, "Erro", vexa::Icone::Critico);
        return 1;
    }
    vexa::Sessao sessao(pasta);
    vexa::prepara_pasta_dados(sessao);
    vexa::ui::DesktopQt desktop;
    // "--importa PASTA": the old program's folder is imported, and the run ends there.
    if (pedido.Acao == vexa::LinhaComando::Pedido::Importar)
        return vexa::importa_pasta(sessao, desktop, pedido.Parametros.value(0)) ? 0 : 1;
    desktop.Abre(std::make_unique<vexa::Main>(sessao, desktop, pedido.Campos));
    // The entry screen closes itself in its load when another copy was running.
    if (!desktop.Aberta(vexa::telas::Main)) return 0;
    vexa::copia_do_dia(sessao, desktop);
    return app.exec();
}
