#include "ui/binder.h"

#include <QTimer>
#include <QWidget>
#include <algorithm>

// The binder's life and its dispatch of handlers. What it does with widgets lies beside:
// binder_sinais.cpp (a widget's signal runs a handler), binder_teclado.cpp (focus and keys),
// binder_espelho.cpp (the model's state back on the widgets).

namespace vexa::ui {

namespace {
std::vector<Binder *> &vivos() {
    static std::vector<Binder *> v;
    return v;
}
int profundidade = 0;
} // namespace

Binder::Binder(Tela &tela, QWidget *raiz) : QObject(raiz), tela_(tela), raiz_(raiz) {
    vivos().push_back(this);
    QList<QObject *> objetos;
    objetos.append(raiz);
    for (QObject *o : raiz->findChildren<QObject *>())
        objetos.append(o);
    for (QObject *o : objetos) {
        if (o->objectName().isEmpty()) continue;
        const RefControle ref = RefControle::de(o->objectName());
        if (!ref.valida()) continue;
        if (Controle *c = tela.controle(ref)) liga(o, ref, c);
    }
    // Timers have no widget: the binder runs them.
    for (const auto &[ref, c] : tela.controles()) {
        if (c->Tipo != TipoControle::Temporizador) continue;
        auto *t = new QTimer(this);
        const RefControle r = ref;
        connect(t, &QTimer::timeout, this, [this, r] {
            if (tela_.Descarregada()) return;
            Despacha([this, r] { tela_.Dispara(r, Evento::Timer); });
        });
        timers_.push_back({ref, t});
    }
    tela.aoMudar = [this] {
        if (profundidade == 0) Espelha();
    };
    Espelha();
}

Binder::~Binder() {
    auto &v = vivos();
    v.erase(std::remove(v.begin(), v.end(), this), v.end());
    if (!tela_.Descarregada()) tela_.aoMudar = nullptr;
}

bool Binder::Ocupado() {
    return profundidade > 0;
}

void Binder::Despacha(const std::function<void()> &acao) {
    ++profundidade;
    acao();
    --profundidade;
    if (profundidade == 0) EspelhaTodos();
}

void Binder::EspelhaTodos() {
    const auto copia = vivos();
    for (Binder *b : copia)
        if (std::find(vivos().begin(), vivos().end(), b) != vivos().end()) b->Espelha();
}

QObject *Binder::objeto(const RefControle &ref) const {
    for (const auto &l : ligacoes_)
        if (l.ref == ref) return l.objeto;
    return nullptr;
}

QWidget *Binder::widget(const RefControle &ref) const {
    return qobject_cast<QWidget *>(objeto(ref));
}

const Binder::Ligacao *Binder::ligacao_de(QObject *obj) const {
    for (const auto &l : ligacoes_)
        if (l.objeto == obj) return &l;
    return nullptr;
}

void Binder::PintaAoEspelhar(QWidget &janela, const std::function<void()> &pinta) {
    QMetaObject::invokeMethod(
        &janela,
        [&janela, pinta] {
            if (auto *b = janela.findChild<Binder *>()) b->aoEspelhar = pinta;
            pinta();
        },
        Qt::QueuedConnection);
}

} // namespace vexa::ui
