#include "core/arquivo.h"

#include <QFile>
#include <QSaveFile>

#include <unistd.h>

namespace vexa {

namespace {
// A buffered write may succeed and fail only at the flush, or later at the disk: both are
// asked for before the answer.
bool descarrega(QFileDevice &f) {
    return f.flush() && ::fsync(f.handle()) == 0;
}
} // namespace

bool grava_inteiro(const QString &caminho, const QByteArray &conteudo) {
    QSaveFile f(caminho);
    if (!f.open(QIODevice::WriteOnly)) return false;
    if (f.write(conteudo) != conteudo.size() || !descarrega(f)) {
        f.cancelWriting();
        return false;
    }
    return f.commit();
}

bool acrescenta_inteiro(const QString &caminho, const QByteArray &conteudo) {
    // Unbuffered: bytes a failed write left in a buffer would reach the file when it closes,
    // after it was cut back.
    QFile f(caminho);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) return false;
    const qint64 antes = f.size();
    if (f.write(conteudo) == conteudo.size() && descarrega(f)) return true;
    f.resize(antes);
    return false;
}

} // namespace vexa
