#include "ui/aplicacao.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace vexa::ui {

void PreparaAplicacao(QApplication &app) {
    QCoreApplication::setOrganizationName("VexaPlus");
    QCoreApplication::setApplicationName("Vexa Plus");
    QApplication::setApplicationDisplayName("Vexa Plus");
    // Lists and pages are laid out for Courier New; where it is absent its metric twin
    // stands in, so columns keep their widths.
    QFont::insertSubstitutions("Courier New", {"Liberation Mono", "DejaVu Sans Mono"});
    if (QStyleFactory::keys().contains("Fusion")) app.setStyle(QStyleFactory::create("Fusion"));
    QFont fonte = app.font();
    if (fonte.pointSize() < 10) fonte.setPointSize(10);
    app.setFont(fonte);
}

} // namespace vexa::ui
