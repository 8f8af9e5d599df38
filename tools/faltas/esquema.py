#!/usr/bin/env python3
"""Twelve faults injected into a scratch copy of the tree, one per area of the program, to see
which tests catch each before and after the tests are reorganised. Each fault sits behind
VEXA_FALTA=n, so one build serves all twelve runs. Never run it on a working tree you commit
from: make a scratch worktree (git worktree add /tmp/faltas HEAD --detach), run
esquema.py /tmp/faltas, build vexa_tests and vexa_ui_tests there, then roda.sh /tmp/faltas OUT."""
import pathlib, sys
FALTAS = {
 1: ("texto: mensagem de código repetido no cadastro", 'desktop.MsgBox("Codigo ja cadastrado...",', 'desktop.MsgBox(falta(1) ? "Código já cadastrado..." : "Codigo ja cadastrado...",'),
 2: ("limite: linha do valor até 5", 'n(L1) < 1 || n(L1) > 5,', 'n(L1) < 1 || n(L1) > (falta(2) ? 6 : 5),'),
 3: ("coluna: favorecido na face do cheque", 'L4, C4,', 'L4, C4 + (falta(3) ? 1 : 0),'),
 4: ("ordem: pesquisa por código/nome", '" < ?) Order by " + ordem;', '" < ?) Order by " + ordem + (falta(4) ? " DESC" : "");'),
 5: ("pergunta pulada: guardar layout de cópia", 'if (desktop.MsgBox("Deseja Guardar este Script?"', 'if (falta(5) || desktop.MsgBox("Deseja Guardar este Script?"'),
 6: ("extenso: mil", 'milhares == 1 ? QStringLiteral("Mil")', 'milhares == 1 ? QString(falta(6) ? "Um Mil" : "Mil")'),
 7: ("VEXA.INI: seção e chave sem caixa", 'return a.compare(b, Qt::CaseInsensitive) == 0;', 'return a.compare(b, falta(7) ? Qt::CaseSensitive : Qt::CaseInsensitive) == 0;'),
 8: ("data: ano bissexto", 'std::fmod(ano, 4.0) == 0) ? 29 : 28;', 'std::fmod(ano, 4.0) == (falta(8) ? 1 : 0)) ? 29 : 28;'),
 9: ("ordem: lista impressa do cadastro por código", '(Ordem == "0" ? "Codigo" : "NomeChave, Nome")', '(Ordem == "0" ? (falta(9) ? "Codigo DESC" : "Codigo") : "NomeChave, Nome")'),
 10: ("data gravada: prazo das parcelas", 'return inicio.addDays(dias).toString', 'return inicio.addDays(dias + (falta(10) ? 1 : 0)).toString'),
 11: ("impressora: falta de papel não avisada", '(exige & ExigePapel) && !temPapel_', '(exige & ExigePapel) && !temPapel_ && !falta(11)'),
 12: ("coluna: valor na linha do relatório", '"#,###,###,##0.00"), "@@@@@@@@@@@@@@@@");', '"#,###,###,##0.00"), falta(12) ? "@@@@@@@@@@@@@@@" : "@@@@@@@@@@@@@@@@");'),
}
CAB = ('#include <QtGlobal>\n[[maybe_unused]] static bool falta(int n) {\n'
       '    static const int f = qEnvironmentVariableIntValue("VEXA_FALTA");\n    return f == n;\n}\n')
repo = pathlib.Path(sys.argv[1])
arquivos = {}
for n, (nome, a, b) in FALTAS.items():
    hits = [p for p in (repo / 'src').rglob('*.cpp') if a in p.read_text(encoding='utf-8')]
    if len(hits) != 1:
        print(f'F{n}: anchor in {len(hits)} files: {hits}'); continue
    p = hits[0]; t = p.read_text(encoding='utf-8')
    if t.count(a) != 1: print(f'F{n}: anchor {t.count(a)} times in {p}'); continue
    if 'static bool falta(' not in t: t = CAB + t
    p.write_text(t.replace(a, b), encoding='utf-8')
    print(f'F{n} {nome}: {p.relative_to(repo)}')
