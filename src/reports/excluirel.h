#pragma once
// "Opções de Cancelamento": marks issued cheques as cancelled in the register, in the report
// the cheque printer keeps, or both. A cancelled cheque stays in the register with its "C".
#include "core/tela.h"

#include <set>

namespace vexa {

class Relato;

class ExcluiRel : public Tela {
  public:
    ExcluiRel(Sessao &sessao, Desktop &desktop);

    // Which cheques, and where they are cancelled.
    Quadro Frame1{"Cheques"};
    Quadro Frame2{"Cancelar em"};
    Matriz<Opcao> RadioBox01{
        {0, Opcao("Ú&ltimo enviado")}, {1, Opcao("&Todos")}, {2, Opcao("Cheque &selecionado")}};
    Matriz<Caixa> CheckBox01{{0, Caixa("&Impressora")}, {1, Caixa("&Banco de Dados")}};
    Matriz<Botao> BtnCmd{"C&onfirmar", "&Cancelar"};

    void RadioBox01_Click(int Index);
    void CheckBox01_Click(int Index);
    void BtnCmd_Click(int Index);

  private:
    Relato *relato() const;
    // Marks the cheques of these rows of the report's list as cancelled in the register. The
    // rows leave the list first, all at once: the list is filled again afterwards anyway.
    void cancela_linhas(Relato &r, const std::set<int> &linhas);
    void cancela_na_impressora(const QString &Opcao);
    // The question before cancelling, naming what will be cancelled and where; No is the
    // default, for cancelling has no way back. True on Yes.
    bool confirma(const Relato *r, const std::set<int> &linhas, const QString &naImpressora);
};

} // namespace vexa
