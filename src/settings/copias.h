#pragma once
// "Restaurar cópia de segurança": the backups of the data folder, newest first; the chosen one
// is put back after a confirmation, and the run then ends.
#include "core/tela.h"
#include "store/copia_seguranca.h"

namespace vexa {

namespace telas {
inline const QString Copias = QStringLiteral("Copias");
} // namespace telas

class Copias : public Tela {
  public:
    Copias(Sessao &sessao, Desktop &desktop);

    Rotulo Label1;
    Lista List1;
    Matriz<Botao> Command1{"&Restaurar", "Fecha&r"};

    void Form_Load() override;
    void Command1_Click(int Index);

  private:
    QList<CopiaSeguranca> copias_;
};

} // namespace vexa
