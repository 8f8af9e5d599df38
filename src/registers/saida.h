#pragma once
// "Imprimir Relatorio": the list of a register (payees, cities, bank or transfer layouts) on
// the cheque printer or on the system printer, by code or by name.
#include "core/tela.h"

namespace vexa {

// Destino 0 the cheque printer, 1 the system printer; Ordem "0" by code, "1" by name.
// ImprimeCadastro lists Tabela "Favorecido" or "Cidade"; ImprimeBancos lists the layouts
// that TabelaBancos of Sessao chooses (1 Bancos, 2 Transferencia).
void ImprimeCadastro(Sessao &s, Desktop &d, int Destino, const QString &Ordem,
                     const QString &Tabela);
void ImprimeBancos(Sessao &s, Desktop &d, int Destino, const QString &Ordem);

// The pages of a register list, each a whole text with CR LF line ends, as they go out.
// Registros: code and name of each record, already in the list's order.
QStringList paginas_lista(const QString &Tabela, int Destino,
                          const QList<QPair<QString, QString>> &Registros, const QString &Hoje6);

class Saida : public Tela {
  public:
    Saida(Sessao &sessao, Desktop &desktop);

    // In "Ordem" 4 "Nome" and 3 "Código" order the list; in "Saída" 0 "Vexa" and 1
    // "Impressora do sistema" choose the printer.
    Quadro Frame1{"Ordem"};
    Quadro Frame2{"Saída"};
    Matriz<Opcao> Option1{{0, Opcao("Vexa")},
                          {1, Opcao("Impressora do sistema")},
                          {3, Opcao("Código")},
                          {4, Opcao("Nome")}};
    Painel SSPanel1;
    Botao Command1{"&Imprimir"};
    Botao Command2{"&Sair"};

    void Command1_Click();
};

} // namespace vexa
