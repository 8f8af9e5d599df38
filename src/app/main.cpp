// Vexa Plus: fills in and prints cheques on the document printer and keeps their register.
#include "cheque/main.h"
#include "core/sessao.h"
#include "printer/impressora_sistema.h"
#include "printer/papel.h"
#include "printer/pdf_face.h"
#include "printer/pinta_sistema.h"
#include "settings/importa.h"
#include "settings/versao.h"
#include "store/copia_registro.h"
#include "store/copia_seguranca.h"
#include "store/pasta_dados.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"
#include "ui/previa_sistema.h"

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
    vexa::define_impressor_sistema(vexa::imprime_sistema);
    vexa::define_previa_sistema(vexa::ui::previa_cheque_sistema);
    vexa::define_lista_impressoras(vexa::impressoras_sistema);
    const QString pasta = vexa::escolhe_pasta_dados(
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    if (const QString erro = vexa::verifica_pasta_dados(pasta); !erro.isEmpty()) {
        vexa::ui::DesktopQt().MsgBox(erro, vexa::Botoes::OK, "Erro", vexa::Icone::Critico);
        return 1;
    }
    vexa::Sessao sessao(pasta);
    vexa::prepara_pasta_dados(sessao);
    if (pedido.Acao == vexa::LinhaComando::Pedido::CopiarRegistro)
        return vexa::copia_registro_comando(sessao, pedido.Parametros);
    // "--cheque-teste ARQUIVO.pdf [BANCO]": the test cheque through the system printer's road,
    // with its current calibration, into that PDF, and the run ends there.
    if (pedido.Acao == vexa::LinhaComando::Pedido::ChequeTeste) {
        vexa::ImpressoraSistema impressora(sessao.CaminhoApp, sessao.CaminhoIni);
        impressora.DefineArquivoPdf(pedido.Parametros.value(0));
        const qint16 r = impressora.ImprimeChequeTeste(pedido.Parametros.value(1));
        if (r != 1)
            std::fputs(qPrintable(QStringLiteral("Cheque de teste não impresso (%1). %2\n")
                                      .arg(r)
                                      .arg(impressora.Motivo(r))),
                       stderr);
        return r == 1 ? 0 : 1;
    }
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
