#pragma once

#include <QWidget>

/// The tab "Поиск".
class CSearchPage : public QWidget
{
    Q_OBJECT

public:
    explicit CSearchPage(QWidget *parent = nullptr);
};
