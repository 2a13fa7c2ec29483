#pragma once

#include "link/tlg_thread.h"
#include "tests/support/desk.h"
#include "tools/linesim/console/event_log.h"
#include "tools/linesim/nerva/nerva_line.h"
#include "ui/dialogs/nerva_config_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

#include <memory>

/// A desk with a simulated Ethernet adapter, and the dialog that configures it.
class NervaRoom
{
public:
    explicit NervaRoom(NervaFault fault = NervaFault::None, const QVector<NervaSettings::Value> &values = {})
    {
        AdapterLine::Settings settings;
        settings.serial = QStringLiteral("30000001");
        settings.nerva = NervaSettings();
        settings.nerva->fault = fault;
        settings.nerva->values = values;
        adapter = std::make_unique<NervaLine>(settings, log);
        if (!adapter->start())
            qFatal("no adapter");
        qputenv("VELDA_PORTS", "30000001=" + adapter->place().toLocal8Bit());
        dialog = std::make_unique<CNervaConfigDialog>(nullptr, QStringLiteral("30000001"));
        dialog->open();
    }
    ~NervaRoom()
    {
        qunsetenv("VELDA_PORTS");
        if (QTest::currentTestFailed())
            qWarning("%s\n---\n%s", qPrintable(lines.join(QLatin1Char('\n'))),
                     qPrintable(pane()->toPlainText()));
    }
    NervaRoom(const NervaRoom &) = delete;
    NervaRoom &operator=(const NervaRoom &) = delete;

    template <class Widget> [[nodiscard]] Widget *find(const char *name) const
    {
        return dialog->findChild<Widget *>(QLatin1String(name));
    }
    [[nodiscard]] QPushButton *button(const char *name) const { return find<QPushButton>(name); }
    [[nodiscard]] QString field(const char *name) const { return find<QLineEdit>(name)->text(); }
    [[nodiscard]] int number(const char *name) const { return find<QSpinBox>(name)->value(); }
    [[nodiscard]] QString choice(const char *name) const { return find<QComboBox>(name)->currentText(); }
    [[nodiscard]] QPlainTextEdit *pane() const { return find<QPlainTextEdit>("log"); }
    /// The lines of the log. A status that was under way when the adapter was asked stands in front of its
    /// reply, and is left out.
    [[nodiscard]] QStringList logged() const
    {
        QStringList logLines = pane()->toPlainText().split(QLatin1Char('\n'));
        return logLines.replaceInStrings(QRegularExpression(QStringLiteral("^\\?+\\{")), QStringLiteral("{"));
    }
    [[nodiscard]] QProgressDialog *progress() const { return dialog->findChild<QProgressDialog *>(); }
    [[nodiscard]] QStringList events(const char *name) const
    {
        return lines.filter(QRegularExpression(QLatin1Char('^') + QLatin1String(name)));
    }

    void press(const char *name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void type(const char *name, const QString &text) const
    {
        auto *edit = find<QLineEdit>(name);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }
    /// Until the buttons are there again: what was pressed has been done.
    [[nodiscard]] bool done() const
    {
        return comesTrue([this] { return button("read")->isEnabled() && progress() == nullptr; });
    }
    [[nodiscard]] bool read() const
    {
        press("read");
        return done();
    }
    [[nodiscard]] bool write() const
    {
        press("write");
        return done();
    }
    /// Closes the dialog as its button does; true once it has gone and the adapter knows.
    [[nodiscard]] bool leave() const
    {
        press("cancel");
        return comesTrue([this] { return !dialog->isVisible() && !events("closed").isEmpty(); });
    }

    Desk desk;
    QStringList lines; ///< what the adapter tells
    EventLog log{[this](const QString &line) { lines << line; }};
    std::unique_ptr<NervaLine> adapter;
    std::unique_ptr<CNervaConfigDialog> dialog;
};

/// What an adapter that is as it left the factory tells.
inline QString factoryText()
{
    return QStringLiteral(
        "{v:2,ver:260601,mac:\"02:00:00:00:00:01\",eth_spd:4,local_ip:\"192.168.0.20\","
        "gw:\"192.168.0.1\",netmask:\"255.255.255.0\",local_port:5674,tlg_baud:200,tlg_type:1,"
        "ip_mode:0,tcp_timeout:30,sys_mode:0,remote_ip:\"192.168.0.30\",remote_port:5675,"
        "remote2_ip:\"192.168.0.31\",remote2_port:5676,http_mode:1,http_port:80,"
        "http_access:\"192.168.0.0/255.255.255.0\",sn:\"30000001\"}");
}
