#pragma once
// What the widget tests share: message boxes answered as they open, and the focused widget.
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>
#include <QWidget>

namespace vexa::teste {

// Answers every message box that opens with OK, and keeps its title and text.
class Respondedor {
  public:
    Respondedor() {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            auto *caixa = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!caixa || !caixa->isVisible()) return;
            Vistas << caixa->windowTitle() + ": " + caixa->text();
            for (QAbstractButton *b : caixa->buttons())
                if (b->text() == "OK") return b->click();
        });
        timer_.start(10);
    }
    // "Title: text" of each box, in order.
    QStringList Vistas;

  private:
    QTimer timer_;
};

// The name of the widget that has the focus, empty when none has it.
inline QString foco() {
    QWidget *w = QApplication::focusWidget();
    return w ? w->objectName() : QString();
}

} // namespace vexa::teste
