#pragma once
// Work that can take more than a second tells the operator what it is doing and how far it
// got; where stopping is safe it offers Cancelar, and the work then undoes what it started.
#include <QString>
#include <QtGlobal>

namespace vexa {

class Progresso {
  public:
    virtual ~Progresso() = default;
    // Starts a piece of work of maximo steps under a title, with a text saying what it does.
    // Without cancelavel no Cancelar is offered.
    virtual void Inicia(const QString &titulo, const QString &texto, qint64 maximo,
                        bool cancelavel = true) = 0;
    // The work reached this step. False once the operator pressed Cancelar.
    virtual bool Passo(qint64 valor) = 0;
    virtual void Termina() = 0;
};

// Shows nothing and never cancels: the desktop's progress when it has none to show.
class ProgressoMudo : public Progresso {
  public:
    void Inicia(const QString &, const QString &, qint64, bool) override {}
    bool Passo(qint64) override { return true; }
    void Termina() override {}
};

// One piece of work from start to end: the progress ends when this goes out of scope. The
// steps are told a few hundred times at most over the whole work, however many rows it has.
class Trabalho {
  public:
    Trabalho(Progresso &p, const QString &titulo, const QString &texto, qint64 maximo,
             bool cancelavel = true)
        : p_(p), maximo_(maximo), salto_(qMax<qint64>(1, maximo / 200)) {
        p_.Inicia(titulo, texto, maximo, cancelavel);
    }
    ~Trabalho() { p_.Termina(); }
    Trabalho(const Trabalho &) = delete;
    Trabalho &operator=(const Trabalho &) = delete;

    // False when the operator cancelled; a step between two told ones costs a comparison.
    bool passo(qint64 valor) {
        if (valor < proximo_ && valor < maximo_) return true;
        proximo_ = valor + salto_;
        return p_.Passo(valor);
    }

  private:
    Progresso &p_;
    qint64 maximo_, salto_, proximo_ = 0;
};

} // namespace vexa
