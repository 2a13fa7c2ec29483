#include "ui/protocol_widget.h"

CProtocolWidget::CProtocolWidget(CProtocol *, QWidget *parent) : QWidget(parent) {}
void CProtocolWidget::reset() {}
bool CProtocolWidget::isLastString() const { return true; }
void CProtocolWidget::toFirstLine() {}
void CProtocolWidget::toLastLine() {}
void CProtocolWidget::move(int) {}
void CProtocolWidget::movePage(int) {}
void CProtocolWidget::setDate(const QDate &) {}
void CProtocolWidget::setInputStopped(bool) {}
void CProtocolWidget::setCursorEnable(bool) {}
void CProtocolWidget::initFont() {}
void CProtocolWidget::initPallette() {}
bool CProtocolWidget::showRegisters() const { return false; }
bool CProtocolWidget::showInfo() const { return true; }
bool CProtocolWidget::showCmd() const { return false; }
void CProtocolWidget::setShowRegisters(bool) {}
void CProtocolWidget::setShowInfo(bool) {}
void CProtocolWidget::setShowCmd(bool) {}
void CProtocolWidget::slotProtocolDataChanged() {}
void CProtocolWidget::slotProtocolNewLine() {}
void CProtocolWidget::slotFlush() {}
