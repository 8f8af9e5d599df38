#include "ui/aplicacao.h"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QTranslator>

namespace vexa::ui {

void prepara_aplicacao(QApplication &app) {
    QCoreApplication::setOrganizationName("VexaPlus");
    QCoreApplication::setApplicationName("Vexa Plus");
    QApplication::setApplicationDisplayName("Vexa Plus");
    // The system's own dialogs and buttons (print, save, Cancel...) speak Portuguese too.
    auto *traducao = new QTranslator(&app);
    if (traducao->load(QStringLiteral("qtbase_pt_BR"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(traducao);
    // Lists and pages are laid out for Courier New; where it is absent its metric twin
    // stands in, so columns keep their widths.
    QFont::insertSubstitutions("Courier New", {"Liberation Mono", "DejaVu Sans Mono"});
    if (QStyleFactory::keys().contains("Fusion")) app.setStyle(QStyleFactory::create("Fusion"));
    QFont fonte = app.font();
    if (fonte.pointSize() < 10) fonte.setPointSize(10);
    app.setFont(fonte);
}

} // namespace vexa::ui
