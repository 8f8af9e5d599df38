#include "printer/folha_texto.h"

#include <algorithm>

namespace vexa {

QString FolhaTexto::recebe(const QString &lido) {
    QString agora;
    for (const QChar c : lido) {
        if (escape_) {
            escape_ = false;
            if (c == u'I' && !invertida_)
                invertida_ = true;
            else if (c == u'I' || c == u'@')
                agora += desinverte();
        } else if (c == u'\x1B') {
            escape_ = true;
        } else if (c == u'\n' || c == u'\t' || c >= u' ') {
            (invertida_ ? retido_ : agora) += c;
        }
    }
    texto_ += agora;
    return agora;
}

QString FolhaTexto::encerra() {
    escape_ = false;
    const QString resto = desinverte();
    texto_ += resto;
    return resto;
}

QString FolhaTexto::desinverte() {
    invertida_ = false;
    if (retido_.isEmpty()) return {};
    if (!retido_.endsWith(u'\n')) retido_ += u'\n';
    QStringList linhas = retido_.split(u'\n');
    linhas.removeLast();
    std::reverse(linhas.begin(), linhas.end());
    retido_.clear();
    return linhas.join(u'\n') + u'\n';
}

QStringList FolhaTexto::Linhas() const {
    QStringList linhas = texto_.split(u'\n');
    if (texto_.endsWith(u'\n')) linhas.removeLast();
    return linhas;
}

void FolhaTexto::define_forma(Formulario forma) {
    if (formaDefinida_) return;
    forma_ = forma;
    formaDefinida_ = true;
}

} // namespace vexa
