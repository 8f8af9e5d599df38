#pragma once
// Tests that need a file system of their own (one that fills up, one mounted read-only) run
// again in a child process with a mount namespace of its own, where they may mount a small
// tmpfs without touching the machine's mounts.
#include <QString>

namespace vexa::teste {

enum class Filho {
    Dentro,      // this is the child: the test goes on here and may mount
    Passou,      // the parent: the child ran the test and it passed
    Falhou,      // the parent: the child ran the test and it failed (its output is reported)
    SemMontagem, // the parent: no mount namespace can be had on this machine
};

// In the parent, runs the current test in a child (unshare -m as root, unshare -rm
// otherwise) and reports; in the child, answers Dentro.
Filho roda_em_montagem_propria();

// A tmpfs of that many KiB mounted on pasta for the life of the object.
struct Montagem {
    Montagem(const QString &pasta, int kib);
    ~Montagem();
    Montagem(const Montagem &) = delete;
    Montagem &operator=(const Montagem &) = delete;
    QString pasta;
    bool montada = false;
};
// Remounts the file system at pasta read-only.
bool monta_so_leitura(const QString &pasta);

} // namespace vexa::teste
