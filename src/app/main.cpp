// Vexa Plus: fills in and prints cheques on the document printer and keeps their register.
#include "cheque/main.h"
#include "core/sessao.h"
#include "printer/impressora_sistema.h"
#include "printer/papel.h"
#include "printer/pdf_face.h"
#include "printer/pinta_sistema.h"
#include "store/pasta_dados.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"
#include "ui/previa_sistema.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char *argv[]) {
    QApplication app(argc, argv);
    vexa::ui::prepara_aplicacao(app);
    vexa::define_pintor_pdf(vexa::pdf_face);
    vexa::define_impressor_sistema(vexa::imprime_sistema);
    vexa::define_previa_sistema(vexa::ui::previa_cheque_sistema);
    vexa::define_lista_impressoras(vexa::impressoras_sistema);

    // --cheque-teste ARQUIVO.pdf [BANCO]: the test cheque through the system printer's road, with
    // its current calibration, into that PDF.
    const QStringList args = QCoreApplication::arguments();
    if (args.size() >= 3 && args[1] == "--cheque-teste") {
        vexa::Sessao sessao;
        vexa::prepara_pasta_dados(sessao);
        vexa::ImpressoraSistema impressora(sessao.CaminhoApp, sessao.CaminhoIni);
        impressora.DefineArquivoPdf(args[2]);
        const qint16 r = impressora.ImprimeChequeTeste(args.value(3));
        if (r != 1)
            fprintf(stderr, "%s\n",
                    qPrintable(QString("Cheque de teste não impresso (%1). %2")
                                   .arg(r)
                                   .arg(impressora.Motivo(r))));
        return r == 1 ? 0 : 1;
    }

    // The arguments are another program's request: the fields of a cheque.
    const QString linha = QCoreApplication::arguments().mid(1).join(' ');

    vexa::Sessao sessao;
    vexa::prepara_pasta_dados(sessao);
    vexa::ui::DesktopQt desktop;
    desktop.Abre(std::make_unique<vexa::Main>(sessao, desktop, linha));
    // The entry screen closes itself in its load when another copy was running.
    if (!desktop.Aberta(vexa::telas::Main)) return 0;
    return app.exec();
}
