#include "printer/sistema.h"

namespace vexa {

DocumentoImpressao documento_impressao(const QString &titulo, const QStringList &paginas,
                                       int tamanhoFonte) {
    DocumentoImpressao doc;
    doc.Titulo = titulo;
    doc.TamanhoFonte = tamanhoFonte;
    for (QString pagina : paginas) {
        pagina.replace("\r\n", "\n");
        if (pagina.endsWith(u'\n')) pagina.chop(1);
        doc.Paginas.append(pagina.split(u'\n'));
    }
    return doc;
}

QString texto_erro_impressao(int erro, bool avisaCancelado) {
    if (erro == 0) return {};
    if (erro == 482)
        return "Ocorreu erro 482! Possiveis Causas:\n"
               "- A impressora não foi encontrada!\n"
               "- A impressora está desligada!\n"
               "- Fim de papel ou papel enroscado!";
    if (erro == 32755 && !avisaCancelado) return {};
    return "Ocorreu erro " + QString::number(erro) + "!";
}

void mostra_erro_impressao(Desktop &d, int erro, bool avisaCancelado) {
    const QString texto = texto_erro_impressao(erro, avisaCancelado);
    if (!texto.isEmpty()) d.MsgBox(texto);
}

} // namespace vexa
