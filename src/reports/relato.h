#pragma once
// "Relatório de Cheques Transmitidos": the register of issued cheques as one fixed-pitch list,
// the details of the cheque chosen, and the door to what is done with the register afterwards
// (the filter, the general report file, deleting and re-printing a cheque).
#include "core/tela.h"
#include "store/consulta_log.h"

#include <QMap>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace vexa {

class RecordSet;

// The 138-character row of a cheque in the list: status, number, bank, amount, date, payee
// and the record's key, each in its fixed columns. registro holds the fields of a Log row by
// their names (compared without case).
QString LinhaRelatorio(const QMap<QString, QString> &registro);
// The list's heading, each title over its column of LinhaRelatorio.
QString CabecalhoRelatorio();

// A cheque named for a question, one field a line: bank, number, amount, payee, date.
QString descreve_cheque(const QString &banco, const QString &numero, const QString &valor,
                        const QString &favorecido, const QString &data);
// The same from a row of the list.
QString descreve_linha(const QString &linha);

// The register could not be read after the database was opened (another program holds it
// locked): told in place of an empty list or an empty report, never shown as one.
void avisa_registro_ilegivel(Sessao &s, Desktop &d);

class Relato : public Tela {
  public:
    Relato(Sessao &sessao, Desktop &desktop);

    // The list of cheques; several rows can be chosen at once.
    Lista List1;
    Rotulo Label2{CabecalhoRelatorio()};
    // The details of the chosen cheque: 0 bank, 1 amount, 2 payee, 3 city, 4 date, 5 the
    // total, 6 number, 7 status, 8 to 10 the comments.
    Matriz<Rotulo> Text1 = Matriz<Rotulo>::comTamanho(11);
    // Their captions, by the same index (8 stands over the three comments).
    Matriz<Rotulo> Label1{
        {0, Rotulo("Banco:")},  {1, Rotulo("Valor:")},  {2, Rotulo("Favorecido:")},
        {3, Rotulo("Cidade:")}, {4, Rotulo("Data:")},   {5, Rotulo("Total em cheques")},
        {6, Rotulo("Número:")}, {7, Rotulo("Status:")}, {8, Rotulo("Comentarios:")}};

    Botao SSCommand1{"&Enviar Lista"};
    Botao SSCommand2{"&Fechar"};
    Botao SSCommand3{"&Re-Imprimir"};
    Botao SSCommand4{"&Cancelar Cheque"};
    Botao SSCommand5{"&Lista Completa"};
    Botao SSCommand6{"F&iltro"};
    Botao Elimina{"Excl&uir Cheque"};
    Botao Historico{"&Histórico"};
    Botao criar{"Criar &Agora"};
    Quadro FrameGeral{"Criar relatório Geral"};
    Rotulo Label3{"Compatível com "};
    Rotulo Label4{"Word e Excel"};
    // The rows of the list for a spreadsheet: 0 CSV, 1 OpenDocument.
    Matriz<Botao> Exportar{"Planilha CS&V", "Planilha &ODS"};
    // The chart of the amounts by month and bank beside the table: 0 prints it, 1 saves it as
    // PDF.
    Matriz<Botao> Grafico{"Imprimir &gráfico", "Gráfico em P&DF"};
    // How many cheques the list shows, and the sign that a filter narrows it ("Lista
    // Completa" drops it).
    Rotulo LabelContagem;
    // The order of the list: by the register's key or by one of its columns.
    Rotulo LabelOrdem{"Orde&m da lista:"};
    Combo Ordem;
    Caixa Decrescente{"Decrescen&te"};
    Rotulo LabelFiltro{"Filtro ativo: a lista mostra só os cheques que atendem ao filtro."};

    // The list's format and its target.
    Quadro FrameFormato{"Formato"};
    Quadro FrameEnvio{"Opções de Envio"};
    Matriz<Opcao> OpCmd{{0, Opcao("Ve&xa")}, {1, Opcao("&Normal")}};
    Matriz<Opcao> OpCmd01{{0, Opcao("Ar&quivo")}, {1, Opcao("Com&pacto")}};
    Matriz<Opcao> OpCmd02{{0, Opcao("Impressora do &sistema")}};

    // The sum of the amounts of the cheques listed that are not cancelled, in centavos.
    qint64 Total = 0;
    // The key of the cheque whose details are shown; empty when none is.
    QString Mostrado;
    // The last fill of the list could not read the register: the list is empty for that
    // reason, not because the register is.
    bool Ilegivel = false;
    // The column the list is sorted by (a ColunaLog; -1 the register's own order) and its
    // direction. Kept across refills, so that a filter or a cancellation keeps the order.
    int OrdemColuna = -1;
    bool OrdemCrescente = true;

    // The rows the list shows, in its order: what the spreadsheets export.
    const RecordSet *Linhas() const { return linhas_.get(); }
    // The cells of a row of the list as the table shows them, by ColunaLog: the status spelt
    // out for a cancelled cheque, the amount with its thousands, the other fields as stored.
    QStringList Celulas(int linha) const;
    // The amounts of the cheques the list shows by month and bank, for the chart: asked of
    // the database once for each fill of the list, the months as "aaaamm", the last 24 of
    // the list. Empty when it could not be read.
    const QList<SomaMensal> &SomasGrafico();
    // The chart as the view that draws it gives it: a PDF document (empty when it could not be
    // drawn), and its print on the system printer after the dialog (answered as ImprimeSistema
    // answers).
    std::function<QByteArray()> GraficoPdf;
    std::function<int()> ImprimeGrafico;

    void Form_Load() override;
    void Form_Unload() override;

    // Fills the list from the current set of Log rows, first to last, with the total. The
    // cheque shown stays only when the list still holds it. False, after telling the operator,
    // when the register could not be read: the list is then empty and the total blank.
    bool CarregaListaLog();
    // Shows one cheque: the current set becomes that cheque alone. Nothing for an empty key.
    void CarregaDetalhe(const QString &Index);
    // Drops any filter: the current set is every row of Log again, and the list is refilled.
    void ListaCompletaLog();

    // No cheque shown: the details are emptied, and the commands on the shown cheque have
    // nothing to act on.
    void LimpaDetalhe();
    // The shown cheque named for a question.
    QString DescricaoCheque() const;
    // Takes these rows out of the list in one go; the rows after them move up.
    void RemoveLinhas(const std::set<int> &linhas);

    // Sorts the list by a column (a ColunaLog, -1 the register's key). The current set takes
    // the same order, so that the lists, the report and the spreadsheets follow the screen.
    void Ordena(int coluna, bool crescente);
    void Ordem_Click();
    void Decrescente_Click();
    // A click on the table's heading: sorts by that column, the other way round when the
    // list is sorted by it already.
    void Cabecalho_Click(int coluna);

    void List1_Click();
    void SSCommand1_Click();
    void SSCommand2_Click();
    void SSCommand3_Click();
    void SSCommand4_Click();
    void SSCommand5_Click();
    void SSCommand6_Click();
    void Elimina_Click();
    void Historico_Click();
    void criar_Click();
    void Exportar_Click(int Index);
    void Grafico_Click(int Index);

  private:
    // The database could be opened at the load.
    bool aberta_ = false;
    std::shared_ptr<RecordSet> linhas_;
    // Where each column of the table stands in a row of linhas_.
    QList<int> colunas_;
    std::optional<QList<SomaMensal>> somas_;
};

} // namespace vexa
