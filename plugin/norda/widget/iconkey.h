#pragma once

#include <QIcon>
#include <QPointer>
#include <QPushButton>

class QLabel;

namespace norda {

/**
 * A key that is nothing but its image: the pressed one while it is checked or held down, a faint
 * grey one while it is disabled. A style sheet that draws no frame looks the same, but costs more
 * than the image itself.
 */
class IconKey : public QPushButton
{
    Q_OBJECT
    /** Paths of two images, normal and pressed, which are decoded when they are shown first. */
    Q_PROPERTY(QStringList images READ images WRITE setImages)
public:
    explicit IconKey(QWidget *parent = nullptr);
    ~IconKey() override;

    QStringList images() const { return m_images; }
    void setImages(const QStringList &paths);

    /** Makes a label that lies over the key its caption: it lets touches through and fades too. */
    void setCaption(QLabel *caption);

protected:
    /** The faint one while it is disabled. */
    QIcon shownIcon();
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showCaption();
    QIcon fadedIcon();

    QStringList m_images;
    QPointer<QLabel> m_caption;
    QIcon m_fadedIcon;
    qint64 m_fadedFrom = 0; // cache key of the icon that the faded one was made from
};

} // namespace norda
