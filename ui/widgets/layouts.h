#pragma once

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>

// The layouts that the window and the dialogs are built from. The digit in a name is the margin in pixels;
// the spacing is always 2.

class QGridLayout0 : public QGridLayout
{
    Q_OBJECT

public:
    explicit QGridLayout0(QWidget *parent = nullptr);
};

class QGridLayout1 : public QGridLayout
{
    Q_OBJECT

public:
    explicit QGridLayout1(QWidget *parent = nullptr);
};

class QHBoxLayout0 : public QHBoxLayout
{
    Q_OBJECT

public:
    explicit QHBoxLayout0(QWidget *parent = nullptr);
};

class QHBoxLayout1 : public QHBoxLayout
{
    Q_OBJECT

public:
    explicit QHBoxLayout1(QWidget *parent = nullptr);
};

class QVBoxLayout0 : public QVBoxLayout
{
    Q_OBJECT

public:
    explicit QVBoxLayout0(QWidget *parent = nullptr);
};

class QVBoxLayout1 : public QVBoxLayout
{
    Q_OBJECT

public:
    explicit QVBoxLayout1(QWidget *parent = nullptr);
};

/// Margin 4, spacing 2.
class QVBoxLayoutMS : public QVBoxLayout
{
    Q_OBJECT

public:
    explicit QVBoxLayoutMS(QWidget *parent = nullptr);
};

/// A group box that has its grid, of margin 1, from the start.
class QGroupBox1 : public QGroupBox
{
    Q_OBJECT

public:
    explicit QGroupBox1(const QString &title = QString(), QWidget *parent = nullptr);

    QGridLayout1 *grid; ///< the box's own
};

/// A fresh QVBoxLayoutMS without a parent.
[[nodiscard]] QVBoxLayoutMS *newVBoxLayout();

/// The rows of \a page, which has none yet, as a QVBoxLayoutMS. In large letters on a small screen they
/// scroll rather than lose their last ones.
[[nodiscard]] QVBoxLayoutMS *newScrollingRows(QWidget *page);

/// Has Tab go through \a controls, which are in one window or none, in this order. Null ones are passed over.
void orderTabs(const QList<QWidget *> &controls);
