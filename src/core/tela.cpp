#include "core/tela.h"

#include <QRegularExpression>

#include <atomic>

namespace vexa {

LinhasLista::LinhasLista(const QStringList &textos) : textos_(textos) {
    mudou();
}

void LinhasLista::mudou() {
    // One counter for every list: a list assigned over another never looks unchanged.
    static std::atomic<quint64> contador{0};
    versao_ = ++contador;
}

QString LinhasLista::at(int i) const {
    if (i < 0 || i >= size()) return {};
    return fonte_ ? fonte_->linha(i) : textos_[i];
}

bool LinhasLista::contains(const QString &texto) const {
    if (!fonte_) return textos_.contains(texto);
    for (int i = 0; i < fonte_->conta; ++i)
        if (fonte_->linha(i) == texto) return true;
    return false;
}

QStringList LinhasLista::lista() const {
    if (!fonte_) return textos_;
    QStringList t;
    t.reserve(fonte_->conta);
    for (int i = 0; i < fonte_->conta; ++i)
        t.append(fonte_->linha(i));
    return t;
}

void LinhasLista::append(const QString &texto) {
    if (fonte_) {
        textos_ = lista();
        fonte_.reset();
    }
    textos_.append(texto);
    mudou();
}

void LinhasLista::clear() {
    textos_.clear();
    fonte_.reset();
    mudou();
}

void LinhasLista::fonte(int conta, Linha linha) {
    textos_.clear();
    fonte_ = std::make_shared<const Fonte>(Fonte{qMax(0, conta), std::move(linha)});
    mudou();
}

bool operator==(const LinhasLista &linhas, const QStringList &textos) {
    if (linhas.size() != textos.size()) return false;
    for (int i = 0; i < textos.size(); ++i)
        if (linhas.at(i) != textos[i]) return false;
    return true;
}

bool Controle::Selected(int i) const {
    return MultiSelect ? Selecionadas.count(i) != 0 : i >= 0 && i == ListIndex;
}

void Controle::SetSelected(int i, bool sim) {
    if (i < 0 || i >= ListCount()) return;
    if (!MultiSelect) {
        if (sim)
            ListIndex = i;
        else if (ListIndex == i)
            ListIndex = -1;
    } else if (sim) {
        Selecionadas.insert(i);
    } else {
        Selecionadas.erase(i);
    }
}

RefControle RefControle::de(const QString &texto) {
    static const QRegularExpression re(R"(^([A-Za-z_][A-Za-z0-9_]*)(?:\((\d+)\))?$)");
    const auto m = re.match(texto);
    if (!m.hasMatch()) return {};
    return {m.captured(1), m.captured(2).isEmpty() ? -1 : m.captured(2).toInt()};
}

Tela::Tela(QString nome, QString caption, Sessao &sessao, Desktop &desktop)
    : Nome(std::move(nome)), Caption(std::move(caption)), sessao(sessao), desktop(desktop) {}

Tela::~Tela() = default;

void Tela::Unload() {
    desktop.Fecha(*this);
}

Controle *Tela::controle(const RefControle &ref) const {
    const auto n = porNome_.find(ref.Nome);
    if (n == porNome_.end()) return nullptr;
    const auto c = n->second.find(ref.Index);
    return c == n->second.end() ? nullptr : c->second;
}

RefControle Tela::ref(const Controle &c) const {
    for (const auto &[r, p] : ordem_)
        if (p == &c) return r;
    return {};
}

void Tela::registra(const QString &nome, Controle &c) {
    registra_indice(nome, -1, c);
}

void Tela::registra_indice(const QString &nome, int index, Controle &c) {
    ordem_.push_back({RefControle{nome, index}, &c});
    porNome_[nome][index] = &c;
}

void Tela::liga(const QString &nome, Evento evento, std::function<void(int)> handler) {
    handlers_[{nome, int(evento)}] = std::move(handler);
}

void Tela::ligaTecla(const QString &nome, Evento evento,
                     std::function<void(int, int &, int)> handler) {
    teclas_[{nome, int(evento)}] = std::move(handler);
}

bool Tela::TemHandler(const RefControle &ref, Evento evento) const {
    return handlers_.count({ref.Nome, int(evento)}) || teclas_.count({ref.Nome, int(evento)});
}

bool Tela::Dispara(const RefControle &ref, Evento evento) {
    if (descarregada_) return false;
    const auto h = handlers_.find({ref.Nome, int(evento)});
    if (h == handlers_.end()) return false;
    h->second(ref.Index);
    return true;
}

bool Tela::DisparaTecla(const RefControle &ref, Evento evento, int &codigo, int shift) {
    if (descarregada_) return false;
    const auto h = teclas_.find({ref.Nome, int(evento)});
    if (h == teclas_.end()) return false;
    h->second(ref.Index, codigo, shift);
    return true;
}

bool Tela::Focavel(const Controle &c) {
    switch (c.Tipo) {
    case TipoControle::Texto:
    case TipoControle::Botao:
    case TipoControle::Opcao:
    case TipoControle::Caixa:
    case TipoControle::Lista:
    case TipoControle::Combo:
    case TipoControle::Forma:
    case TipoControle::Rolagem:
        return c.Enabled && c.Visible;
    default:
        return false;
    }
}

void Tela::Clica(const QString &nome, int index) {
    const RefControle r{nome, index};
    Controle *c = controle(r);
    if (!c || !c->Enabled || !c->Visible) return;
    if (Focavel(*c)) {
        SetFocus(r);
        if (!(foco_ == r)) return;
    }
    if (c->Tipo == TipoControle::Caixa) c->Value = c->Value ? 0 : 1;
    if (c->Tipo == TipoControle::Opcao) {
        for (auto &[outra, p] : ordem_)
            if (p->Tipo == TipoControle::Opcao && p != c && p->Container == c->Container)
                p->Value = 0;
        c->Value = 1;
    }
    Dispara(r, Evento::Click);
}

RefControle Tela::BotaoFechar() const {
    static const QStringList ordem = {"Cancelar", "Fechar", "Sair"};
    RefControle melhor;
    qsizetype posicao = ordem.size();
    for (const auto &[r, c] : ordem_) {
        if (c->Tipo != TipoControle::Botao) continue;
        const qsizetype p = ordem.indexOf(QString(c->Caption).remove(u'&').trimmed());
        if (p >= 0 && p < posicao) {
            melhor = r;
            posicao = p;
        }
    }
    return melhor;
}

bool Tela::TeclaEsc() {
    const RefControle r = BotaoFechar();
    const Controle *c = controle(r);
    if (!c || !c->Enabled || !c->Visible) return false;
    Clica(r.Nome, r.Index);
    return true;
}

void Tela::Digita(const QString &nome, int index, const QString &texto) {
    const RefControle r{nome, index};
    Controle *c = controle(r);
    if (!c) return;
    if (!(foco_ == r)) SetFocus(r);
    QString t = texto;
    if (c->MaxLength > 0 && t.size() > c->MaxLength) t.truncate(c->MaxLength);
    c->Text = t;
    Dispara(r, Evento::Change);
}

void Tela::Rola(const QString &nome, int index, int valor) {
    const RefControle r{nome, index};
    Controle *c = controle(r);
    if (!c || !c->Enabled || !c->Visible) return;
    if (!(foco_ == r)) {
        SetFocus(r);
        if (!(foco_ == r)) return;
    }
    const int v = qBound(qMin(c->Min, c->Max), valor, qMax(c->Min, c->Max));
    if (v == c->Value) return;
    c->Value = v;
    Dispara(r, Evento::Change);
}

int Tela::Tecla(int keyCode, int shift) {
    const RefControle r = foco_;
    if (!r.valida()) return keyCode;
    DisparaTecla(r, Evento::KeyDown, keyCode, shift);
    return keyCode;
}

void Tela::Muda(Controle &c, const QString &texto) {
    c.Text = texto;
    Dispara(ref(c), Evento::Change);
}

void Tela::SetFocus(const RefControle &destino) {
    Controle *c = controle(destino);
    if (!c || !Focavel(*c)) return;
    if (movendo_) {
        // Called from a handler of a move under way: the move ends there instead.
        redireciona_ = destino;
        return;
    }
    if (destino == foco_) return;
    move_foco(destino);
}

void Tela::move_foco(RefControle destino) {
    const RefControle origem = foco_;
    movendo_ = true;
    redireciona_.reset();
    Dispara(destino, Evento::Enter);
    if (redireciona_) destino = *redireciona_;
    redireciona_.reset();
    if (origem.valida() && !(destino == origem)) Dispara(origem, Evento::LostFocus);
    if (redireciona_) destino = *redireciona_;
    movendo_ = false;
    redireciona_.reset();
    if (destino == origem) return;
    foco_ = destino;
    Dispara(destino, Evento::GotFocus);
}

Tela *abre_tela(Sessao &s, Desktop &d, std::unique_ptr<Tela> tela, bool modal) {
    Tela *aberta = d.Abre(std::move(tela), modal);
    if (s.FechaTela) {
        if (aberta) d.Fecha(*aberta);
        s.FechaTela = 0;
        return nullptr;
    }
    return aberta;
}

} // namespace vexa
