#include "reports/arquivo_relatorio.h"

#include "core/arquivo.h"

#include <QFileInfo>

namespace vexa {

bool grava_arquivo_relatorio(Desktop &d, const QString &titulo, const QString &texto) {
    QString caminho =
        d.SalvarComo(titulo, "Arquivo Texto (*.txt);;Todos os Arquivos (*.*)", QString());
    if (caminho.isEmpty()) return false;
    if (QFileInfo(caminho).suffix().isEmpty()) caminho += ".txt";
    if (!grava_inteiro(caminho, "\xEF\xBB\xBF" + texto.toUtf8())) {
        d.MsgBox("Não foi possível gravar o arquivo \"" + caminho +
                     "\". Verifique se a pasta existe, se há espaço no disco e se o arquivo "
                     "não está aberto em outro programa.",
                 Botoes::OK, "Erro", Icone::Exclamacao);
        return false;
    }
    return true;
}

} // namespace vexa
