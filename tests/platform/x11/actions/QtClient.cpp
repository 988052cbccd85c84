// A Qt program with one window, whose title is the first argument. With "--refuse" it does not
// close when it is asked to, and shows that in its title.

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>

namespace {

class Window : public QRasterWindow
{
public:
    explicit Window(bool isRefusing) : m_isRefusing(isRefusing) {}

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::Close && m_isRefusing) {
            setTitle(QStringLiteral("refused"));
            event->ignore();
            return true;
        }
        return QRasterWindow::event(event);
    }

    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(0, 0, width(), height(), Qt::darkCyan);
    }

private:
    const bool m_isRefusing;
};

} // namespace

int main(int count, char** values)
{
    const QGuiApplication application(count, values);
    const QStringList arguments = QGuiApplication::arguments();
    Window window(arguments.contains(QStringLiteral("--refuse")));
    window.setTitle(arguments.value(1));
    window.resize(400, 300);
    window.show();
    return QGuiApplication::exec();
}
