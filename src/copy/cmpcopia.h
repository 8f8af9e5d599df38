#pragma once
// The copy of the cheque on the entry screen, laid out by a copy layout as a page of text
// lines that the operator may correct, and sent to the cheque printer, the system printer or
// the day's copy file.
#include "core/tela.h"

#include <QStringList>
#include <array>
#include <optional>

namespace vexa {

class Main;

// The cheque a copy is made of, as the entry screen holds it.
struct ChequeCopia {
    QString Banco, NomeBanco, Valor, Favorecido, Cidade, Data, Numero;
    QStringList Comentarios{QString(), QString(), QString()};
};
ChequeCopia cheque_do_main(Sessao &s, const Main &m);

// A copy layout: the lines l1..l8 and the columns c1..c11 of a row of table Script, by
// their numbers (index 0 unused).
struct LayoutCopia {
    std::array<int, 9> l{};
    std::array<int, 12> c{};
};

// The page is a table of 22 lines by 91 columns; lines 1 to 21 become text.
inline constexpr int LinhasPagina = 22, ColunasPagina = 91, LinhasTexto = 21;
// The width of a line the printer takes, and how many lines a copy may have.
inline constexpr int LarguraLinha = 80, MaximoLinhas = 40;

// The page of a cheque by a layout, its lines ended by CR LF but the last; the amount in
// words as the printer spelled it. Empty when an item falls outside the page.
std::optional<QString> MontaPagina(const LayoutCopia &layout, const ChequeCopia &cheque,
                                   const QString &extenso);

// "cop", day, month, ".", year: the copy file of a day given as ddmmyy.
QString nome_arquivo_copia(const QString &Hoje6);

// "Linha n Extrapola Tamanho Maximo!" for each line longer than a printed line, each after a
// line break; empty when every line fits.
QString aviso_linhas(const QString &texto);

class CmpCopia : public Tela {
  public:
    // The cheque is read from the entry screen once, when the screen loads, just after
    // ValidaCheque passed it: every layout chosen afterwards composes that checked cheque.
    CmpCopia(Sessao &sessao, Desktop &desktop);
    // A copy of the cheque given.
    CmpCopia(Sessao &sessao, Desktop &desktop, const ChequeCopia &cheque);

    Rotulo Label1{"Layout / Script"};
    Combo Combo1;
    Quadro Frame1{"Enviar para"};
    Matriz<Opcao> OpEnvio{
        {1, Opcao("Vexa")}, {2, Opcao("Impressora do sistema")}, {0, Opcao("Arquivo:")}};
    Rotulo NomeArq;
    Caixa CheckImpMai{"Usar impressão em\nletras maiúsculas"};
    Caixa CheckImpInv{"Usar impressão\ninvertida com este\ndocumento!"};
    Texto CopiaTxt;
    Rotulo Info;
    std::map<int, Botao> BtnCmd{{0, Botao("&Enviar")}, {1, Botao("&Fechar")}};

    void Form_Load() override;
    void Form_Unload() override;

    void Combo1_Click();
    void CheckImpMai_Click();
    void CopiaTxt_Change();
    // The cursor of the page moved (a key or the mouse): its place in the text.
    void CopiaTxt_Cursor(int Posicao);
    void BtnCmd_Click(int Index);

    // Composes the page from the chosen layout; false after the composing message.
    bool MontaCopia();
    void EnviaCopia();
    void GravaArquivo();
    void ImprimeWindows();

    // The full path of today's copy file.
    QString CaminhoArquivo() const;
    // The page as the box holds it, one text per line.
    QStringList LinhasCopia() const;

  private:
    void registra_controles();
    // The cursor's place in the title; the warnings in Info, which hold Enviar back.
    void atualiza_posicao();
    // What the empty page lacks when no layout is chosen; empty otherwise.
    QString falta_layout() const;
    // The chosen target: the index of the option set.
    int envio() const;

    ChequeCopia cheque_;
    bool chequeDado_ = false;
    int cursor_ = 0;
    QString tituloBase_;
    // The options as they were read, to write back only what changed.
    int envioLido_ = 1, maiLido_ = 0, invLido_ = 0;
};

} // namespace vexa
