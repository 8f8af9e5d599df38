#pragma once
// The printer library's fourteen operations, in their argument order. Every one returns
// a 16-bit signed result. Text goes as QString; a backend turns it into ANSI bytes
// (Windows-1252) as the library call does.
#include <QString>

namespace vexa {

class Vexa32 {
  public:
    virtual ~Vexa32() = default;

    // A short name shown on the entry screen: which printer the program is talking to.
    virtual QString Descricao() const = 0;

    virtual qint16 IniciaPorta(const QString &Porta) = 0;
    virtual qint16 FechaPorta() = 0;
    virtual qint16 TravaDoc(qint16 Trava) = 0;
    virtual qint16 ImprimeCheque(const QString &Banco, const QString &Valor,
                                 const QString &Favorecido, const QString &Cidade,
                                 const QString &Data, const QString &Extra) = 0;
    virtual qint16 ImprimeCampoX(qint16 Campo, qint16 Linha, qint16 Coluna,
                                 const QString &Texto) = 0;
    virtual qint16 FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                             qint16 D) = 0;
    virtual qint16 TolvaneTX(const QString &Texto) = 0;
    virtual qint16 ComandoTX(const QString &Comando, qint16 Tamanho) = 0;
    virtual qint16 IncluiBanco(const QString &Codigo, const QString &Posicoes) = 0;
    virtual qint16 IncluiFavorecido(const QString &Codigo, const QString &Nome) = 0;
    virtual qint16 ExcluiFavorecido(const QString &Codigo) = 0;
    virtual qint16 AlteraMoeda(const QString &Singular, const QString &Plural) = 0;
    virtual qint16 CancelaRel(const QString &Opcao) = 0;
    // The library may overwrite characters of Valor in place, never lengthen it.
    virtual qint16 MontaValor(QString &Valor, const QString &Singular, const QString &Plural) = 0;
};

} // namespace vexa
