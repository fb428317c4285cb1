#include "tools/picturefile.h"

#include "outputfile.h"

#include <QBuffer>
#include <QImage>

/** Fast rather than small: pictures are rarely kept. */
static bool encode(const QImage &picture, QByteArray *content)
{
    static constexpr int littleCompression = 80;
    QBuffer buffer(content);
    return picture.save(&buffer, "PNG", littleCompression);
}

bool writePicture(const QString &path, const QImage &picture, const output::InputFiles &inputs,
                  QString *error)
{
    QByteArray content;
    if (encode(picture, &content))
        return output::writeResult(path, content, inputs, error);
    *error = QStringLiteral("%1: expected a picture that can be encoded").arg(path);
    return false;
}
