#pragma once
// "Filtro": narrows the report's list by up to eight criteria. What it finds becomes the
// current set of Log rows, which the list, its total, the printed lists and the general report
// then work on.
#include "core/tela.h"

#include <QString>
#include <QVariantList>

namespace vexa {

// The select of the criteria given (empty texts are criteria not used), in a fixed order:
// bank, payee, city, dates, amounts, comment. Bank, payee and city are matched whole; dates
// and amounts run from the first to the last (the last defaults to the first; a last without
// a first is no criterion); the comment is found anywhere in any of the three comment lines.
// Every criterion given must hold. The operator's texts go in valores, bound.
struct SelecaoLog {
    QString Sql;
    QVariantList Valores;
};
SelecaoLog selecao_filtro_log(const QString &Banco, const QString &DataIni, const QString &DataFim,
                              const QString &ValorIni, const QString &ValorFim,
                              const QString &Favorecido, const QString &Cidade,
                              const QString &Comentario);

// Opens the criteria's select as the current set of Log rows, and has the report's list
// filled from it. False when the register could not be read (the operator is told, the
// report's list stays as it was) or the database is missing.
bool MontaFiltroLog(Sessao &s, Desktop &d, const QString &Banco, const QString &DataIni,
                    const QString &DataFim, const QString &ValorIni, const QString &ValorFim,
                    const QString &Favorecido, const QString &Cidade, const QString &Comentario);

class Filtro : public Tela {
  public:
    Filtro(Sessao &sessao, Desktop &desktop);

    // 0 bank, 1 and 2 the dates, 3 and 4 the amounts, 5 payee, 6 city, 7 comment.
    Matriz<Texto> Text1{{0, Texto()},       {1, Texto()}, {2, Texto()}, {3, Texto("", 16)},
                        {4, Texto("", 16)}, {5, Texto()}, {6, Texto()}, {7, Texto()}};
    Matriz<Rotulo> Label1{"Banco:", "Data..:",     "Até..:",  "Valor.:",
                          "Até..:", "Favorecido:", "Cidade:", "Comentário:"};
    Rotulo Label2; // the bank's name
    Matriz<Botao> Command3D1{"&OK", "&Cancelar"};

    void Form_Load() override;
    void Text1_GotFocus(int Index);
    void Text1_Change(int Index);
    void Text1_LostFocus(int Index);
    void Text1_KeyDown(int Index, int &KeyCode, int Shift);
    void Command3D1_Click(int Index);

  private:
    void recusa(int Index, const QString &mensagem);
};

} // namespace vexa
