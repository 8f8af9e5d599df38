#pragma once
// The program's Qt application: names, fonts and look.
class QApplication;

namespace vexa::ui {

// Names the application (the data folder hangs on these names), puts the system's dialogs in
// Portuguese, maps the cheque fonts to the fixed-pitch fonts the system has, and sets the
// look of the windows.
void prepara_aplicacao(QApplication &app);

} // namespace vexa::ui
