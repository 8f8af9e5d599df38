#pragma once
// "Relatório de Cheques Transmitidos": the register of issued cheques as one fixed-pitch list,
// the details of the cheque chosen, and the door to what is done with the register afterwards
// (the filter, the general report file, deleting and re-printing a cheque).
#include "core/tela.h"

#include <QMap>
#include <QString>
#include <set>

namespace vexa {

class RecordSet;

// The 138-character row of a cheque in the list: status, number, bank, amount, date, payee
// and the record's key, each in its fixed columns. registro holds the fields of a Log row by
// their names (compared without case).
QString LinhaRelatorio(const QMap<QString, QString> &registro);

class Relato : public Tela {
  public:
    Relato(Sessao &sessao, Desktop &desktop);

    // The list of cheques; several rows can be chosen at once.
    Lista List1;
    Rotulo Label2{"Status    Nº Cheque |  Bco  |  Valor                        | Data          | "
                  "Favorecido"};
    // The details of the chosen cheque: 0 bank, 1 amount, 2 payee, 3 city, 4 date, 5 the
    // total, 6 number, 7 status, 8 to 10 the comments.
    Matriz<Rotulo> Text1 = Matriz<Rotulo>::comTamanho(11);
    // Their captions, by the same index (8 stands over the three comments).
    Matriz<Rotulo> Label1{
        {0, Rotulo("Banco:")},  {1, Rotulo("Valor:")},  {2, Rotulo("Favorecido:")},
        {3, Rotulo("Cidade:")}, {4, Rotulo("Data:")},   {5, Rotulo("Total em cheques")},
        {6, Rotulo("Número:")}, {7, Rotulo("Status:")}, {8, Rotulo("Comentarios:")}};

    Botao SSCommand1{"Enviar Lista"};
    Botao SSCommand2{"Fechar"};
    Botao SSCommand3{"Re-Imprimir"};
    Botao SSCommand4{"Cancelar Cheque"};
    Botao SSCommand5{"Lista Completa"};
    Botao SSCommand6{"Filtro"};
    Botao Elimina{"Excluir Cheque"};
    Botao criar{"Criar Agora"};
    Quadro FrameGeral{"Criar relatório Geral"};
    Rotulo Label3{"Compatível com "};
    Rotulo Label4{"Word e Excel"};

    // The list's format and its target.
    Quadro FrameFormato{"Formato"};
    Quadro FrameEnvio{"Opções de Envio"};
    Matriz<Opcao> OpCmd{{0, Opcao("Vexa")}, {1, Opcao("Normal")}};
    Matriz<Opcao> OpCmd01{{0, Opcao("Arquivo")}, {1, Opcao("Compacto")}};
    Matriz<Opcao> OpCmd02{{0, Opcao("Impressora do Win")}};

    // The sum of the amounts of the cheques listed that are not cancelled, in centavos.
    qint64 Total = 0;
    // The key of the cheque whose details are shown.
    QString Mostrado;

    void Form_Load() override;
    void Form_Unload() override;

    // Fills the list from the current set of Log rows, first to last, with the total.
    void CarregaListaLog();
    // Shows one cheque: the current set becomes that cheque alone. Nothing for an empty key.
    void CarregaDetalhe(const QString &Index);
    // Drops any filter: the current set is every row of Log again, and the list is refilled.
    void ListaCompletaLog();

    // Empties the shown cheque's bank, amount, payee, city and date, and its number too.
    void LimpaDetalhe(bool comNumero);
    // Takes these rows out of the list in one go; the rows after them move up.
    void RemoveLinhas(const std::set<int> &linhas);

    void List1_Click();
    void SSCommand1_Click();
    void SSCommand2_Click();
    void SSCommand3_Click();
    void SSCommand4_Click();
    void SSCommand5_Click();
    void SSCommand6_Click();
    void Elimina_Click();
    void criar_Click();

  private:
    // The database could be opened at the load.
    bool aberta_ = false;
};

} // namespace vexa
