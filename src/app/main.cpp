// Vexa Plus: fills in and prints cheques on the document printer and keeps their register.
#include "cheque/main.h"
#include "core/sessao.h"
#include "printer/papel.h"
#include "printer/pdf_face.h"
#include "settings/importa.h"
#include "store/pasta_dados.h"
#include "ui/aplicacao.h"
#include "ui/desktop_qt.h"

#include <QApplication>

int main(int argc, char *argv[]) {
    QApplication app(argc, argv);
    vexa::ui::prepara_aplicacao(app);
    vexa::define_pintor_pdf(vexa::pdf_face);

    // The arguments are another program's request: the fields of a cheque.
    const QString linha = QCoreApplication::arguments().mid(1).join(' ');

    vexa::Sessao sessao;
    vexa::prepara_pasta_dados(sessao);
    vexa::ui::DesktopQt desktop;
    // "--importa PASTA": the old program's folder is imported, and the run ends there.
    const QStringList argumentos = QCoreApplication::arguments();
    if (const qsizetype i = argumentos.indexOf("--importa"); i > 0)
        return vexa::importa_pasta(sessao, desktop, argumentos.value(i + 1)) ? 0 : 1;
    desktop.Abre(std::make_unique<vexa::Main>(sessao, desktop, linha));
    // The entry screen closes itself in its load when another copy was running.
    if (!desktop.Aberta(vexa::telas::Main)) return 0;
    return app.exec();
}
