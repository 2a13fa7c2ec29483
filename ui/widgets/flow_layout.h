#pragma once

#include <QLayout>
#include <QList>

/// Places its items like the words of a paragraph: from left to right, and in a further row what does not
/// fit any more. Its least width is that of its widest item, so that a window stays as narrow as its screen
/// in the largest letters too. Main thread.
class CFlowLayout : public QLayout
{
    Q_OBJECT

public:
    CFlowLayout(int margin, int spacing, QWidget *parent = nullptr);
    ~CFlowLayout() override;

    void addItem(QLayoutItem *item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override; ///< all in one row
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    int flow(const QRect &rect, bool place) const;
    void placeRow(const QList<QLayoutItem *> &row, QPoint at, int height, int width) const;
    [[nodiscard]] QSize withMargins(const QSize &size) const;

    QList<QLayoutItem *> m_items;
};
