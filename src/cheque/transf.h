#pragma once
// "Impressão de Cheque Transferência": a cheque for a transfer between accounts. Its face is
// not laid out by the printer from a stored bank layout: it is composed here as a block of
// 21 text lines from the bank's transfer layout, and sent as text. Nothing is registered.
#include "core/tela.h"

#include <QPair>

namespace vexa {

// The texts that go on the face of a transfer cheque.
struct FaceTransf {
    QString Valor;   // the amount as shown, "1.234,50"
    QString Extenso; // the amount in words, trimmed
    QString Cidade, Data, Agencia, Conta;
};

// The two lines of the words: each line's width is 96 less its printed column; words shorter than
// both together are filled with "*" to the end of the second line, and a break may fall
// inside a word.
QPair<QString, QString> divide_extenso_transf(const QString &Extenso, int Largura1, int Largura2);

// The face of the cheque as it goes to the printer, before the printer's characters: 21 lines
// each ended by LF, then CR LF ESC "@", in capitals. Posicoes: L1..L7, C1..C7 as stored, the
// columns those of the graphic adjust's grid, each item printed at 8/10 of its column (the
// grid's 120 columns over the printer's line of 96).
QString monta_bloco_transf(const QStringList &Posicoes, const FaceTransf &Face);

class ChequeTransf : public Tela {
  public:
    ChequeTransf(Sessao &sessao, Desktop &desktop);

    Quadro Frame1{"Dados do cheque:"};
    Texto txtBanco{"Banco:", 3};
    Texto txtValor{"Valor:"};
    Texto txtAgencia{"Nº / Nome Agência:"};
    Texto txtConta{"Nº Conta:"};
    Texto txtCidade{"Cidade:"};
    Texto txtData{"Data:"};
    Texto txtNumeroCheque{"Nº do Cheque:"};
    Texto txtComentario{"Comentário:"};
    Matriz<Texto> TxtCpo{"Campo 1:", "Campo 2:", "Campo 3:"};
    Painel Panel3D1{"F4 - Grava Linha"};
    Painel Panel3D2{"F8 - Limpa Campo"};
    Matriz<Botao> Opcoes{"&Imprimir", "&Fechar", "&Cópia"};

    // Set for the one Cópia command: a copy on a plain sheet instead of the cheque.
    bool Copia = false;

    void Form_Load() override;

    bool VerificaData(const QString &Data) const;
    void DestacaTexto(Texto &Objeto);
    // F8 empties the field and stores one blank under its key, F4 stores its text; true when
    // the key was one of the two.
    bool GravaCampos(int KeyCode, const QString &label, Texto &Objeto,
                     const QString &secao = QStringLiteral("InfoTransf"));
    void CarregaInfoTransf();
    bool ValidaTransf();
    void ImprimeTransf();

    void Opcoes_Click(int Index);
    void txtBanco_LostFocus();
    void txtValor_LostFocus();

  private:
    void liga_campo(const QString &nome, Texto &campo, const QString &chave, Texto *proximo);
    void recusa(const QString &texto, Texto &campo);
    // "Banco não cadastrado.", and the bank's field emptied.
    void banco_sem_layout();
};

} // namespace vexa
