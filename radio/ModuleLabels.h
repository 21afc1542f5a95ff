#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

// The texts of the module window's current-value labels: a prefix and the
// value in brackets, "当前值 : [ 打开 ]".
namespace ModuleLabels
{

QString bracketed(const QString &prefix, const QString &value);
// "当前值 : [ value ]"
QString currentValue(const QString &value);
// "打开" for 1, "关闭" for anything else (modem switch, frequency hopping).
QString onOff(int value);

// The band label lists every band of the bit set: "当前值 : [ 800M  2.4G ]".
QString bands(quint16 bits);
// Which band buttons the bit set checks; 800M and 500/600M share a button.
struct BandButtons {
    bool band800 = false;
    bool band1400 = false;
    bool band2400 = false;
};
BandButtons bandButtons(quint16 bits);

// "当前类型 : [ 中心节点 ]" and "工作类型 : [ 中心节点 ]"; empty for a type
// outside 0..2.
QString currentType(int type);
QString configuredType(int type);

QString ip(const QString &address);
QString maxPower(int value);
QString carrier(const QString &item);
// The bandwidth list item a link group's code stands for: the module numbers
// 20 MHz, the fifth item, as 5. -1 for codes the list does not have.
int bandwidthItem(int code);
// "Temperature: 45 °C"
QString temperature(const QString &value);

// A console reply as the console shows it: all of it, as it came, decoded
// with the local code page. Long lines are the console's to wrap.
QString consoleText(const QByteArray &reply);

} // namespace ModuleLabels
