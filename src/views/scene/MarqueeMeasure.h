// Measures a title, and decides whether and how far it must scroll within its width.
#pragma once

#include "layout/MarqueeMotion.h"

#include <QFont>
#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace kelpa {

/// Lengths in points. Main thread. Within QML, measures only once it has both its text and its
/// font: another font would have to be loaded first.
class MarqueeMeasure : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT

    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged FINAL)
    Q_PROPERTY(double availableWidth READ availableWidth WRITE setAvailableWidth NOTIFY
                   availableWidthChanged FINAL)
    /// In whole points, rounded up.
    Q_PROPERTY(double textWidth READ textWidth NOTIFY textWidthChanged FINAL)
    /// Whether the title is read from right to left.
    Q_PROPERTY(bool isRightToLeft READ isRightToLeft NOTIFY textChanged FINAL)
    /// Whether the title is wider than `availableWidth`.
    Q_PROPERTY(bool isWide READ isWide NOTIFY motionChanged FINAL)
    /// The distance of one pass; 0 for a title that fits.
    Q_PROPERTY(double travel READ travel NOTIFY motionChanged FINAL)
    /// Between the end of the title and its repeated start.
    Q_PROPERTY(double gap READ gap CONSTANT FINAL)
    /// The duration of one pass in milliseconds; 0 for a title that fits.
    Q_PROPERTY(int passTime READ passTime NOTIFY motionChanged FINAL)

public:
    using QObject::QObject;

    QString text() const { return m_text; }
    void setText(const QString& text);
    QFont font() const { return m_font; }
    void setFont(const QFont& font);
    double availableWidth() const { return m_availableWidth; }
    void setAvailableWidth(double width);
    double textWidth() const { return m_textWidth; }
    bool isRightToLeft() const { return m_text.isRightToLeft(); }
    bool isWide() const { return m_motion.travel > 0; }
    double travel() const { return m_motion.travel; }
    double gap() const { return marqueeGap; }
    int passTime() const;

    void classBegin() override { m_isComplete = false; }
    void componentComplete() override;

Q_SIGNALS:
    void textChanged();
    void fontChanged();
    void availableWidthChanged();
    void textWidthChanged();
    void motionChanged();

private:
    void measure();
    void updateMotion();

    QString m_text;
    QFont m_font;
    double m_availableWidth = 0;
    double m_textWidth = 0;
    MarqueeMotion m_motion;
    bool m_isComplete = true;
};

} // namespace kelpa
