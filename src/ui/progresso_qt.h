#pragma once
// The progress of long work as a dialog: what is being done, a bar, and Cancelar where the
// work can stop without leaving anything half done.
#include "core/progresso.h"

#include <QPointer>

class QProgressDialog;

namespace vexa::ui {

class ProgressoQt : public Progresso {
  public:
    ~ProgressoQt() override;
    void Inicia(const QString &titulo, const QString &texto, qint64 maximo,
                bool cancelavel) override;
    bool Passo(qint64 valor) override;
    void Termina() override;

  private:
    QPointer<QProgressDialog> dialogo_;
    // The bar counts in thousandths: a register's rows can pass what an int holds.
    qint64 maximo_ = 0;
};

} // namespace vexa::ui
