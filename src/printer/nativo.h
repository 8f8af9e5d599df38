#pragma once
// The printer maker's own library, vexa32, loaded at run time.
//
// Each operation turns its texts into zero-ended Windows-1252 strings and its integers into
// 16-bit ones, calls the library's function of the same name and hands back its 16-bit
// result. MontaValor's buffer comes back into the variable at its own length: the library
// may overwrite it, never lengthen it.
//
// When the library can't be loaded (or lacks a function), every operation answers 0: for
// IniciaPorta that is the failure to open the port, and for the others a status that isn't
// success, so each road shows its own error.
#include "printer/vexa32.h"

#include <QLibrary>
#include <QString>

namespace vexa {

class Nativo : public Vexa32 {
  public:
    // local: a folder holding the library, or the library file itself; empty for the
    // system's search path.
    explicit Nativo(const QString &local = QString());
    ~Nativo() override;

    bool Carregada() const { return carregada_; }
    // Why the library isn't loaded (empty when it is).
    QString Erro() const { return erro_; }

    QString Descricao() const override;

    qint16 IniciaPorta(const QString &Porta) override;
    qint16 FechaPorta() override;
    qint16 TravaDoc(qint16 Trava) override;
    qint16 ImprimeCheque(const QString &Banco, const QString &Valor, const QString &Favorecido,
                         const QString &Cidade, const QString &Data, const QString &Extra) override;
    qint16 ImprimeCampoX(qint16 Campo, qint16 Linha, qint16 Coluna, const QString &Texto) override;
    qint16 FormataTX(const QString &Texto, qint16 Modo, qint16 A, qint16 B, qint16 C,
                     qint16 D) override;
    qint16 TolvaneTX(const QString &Texto) override;
    qint16 ComandoTX(const QString &Comando, qint16 Tamanho) override;
    qint16 IncluiBanco(const QString &Codigo, const QString &Posicoes) override;
    qint16 IncluiFavorecido(const QString &Codigo, const QString &Nome) override;
    qint16 ExcluiFavorecido(const QString &Codigo) override;
    qint16 AlteraMoeda(const QString &Singular, const QString &Plural) override;
    qint16 CancelaRel(const QString &Opcao) override;
    qint16 MontaValor(QString &Valor, const QString &Singular, const QString &Plural) override;

  private:
    template <class F> F funcao(const char *nome) const;
    // Calls the library's function of that name with the arguments in their C types.
    template <class... Args> qint16 chama(const char *nome, const Args &...args);

    QLibrary biblioteca_;
    bool carregada_ = false;
    QString erro_;
};

} // namespace vexa
