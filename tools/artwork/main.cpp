// quillmark-artwork IN.svg OUT.png [WIDTHxHEIGHT]
//
// Renders one of our SVG drawings to the PNG that the program loads from its
// image/ folder. Runs at build time, offscreen.

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTextStream>

namespace
{

enum ExitCode { Ok = 0, Usage = 1, BadSvg = 2, WriteFailed = 3 };

bool parseSize(const QString &text, QSize *size)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return false;
    const QSize parsed(match.captured(1).toInt(), match.captured(2).toInt());
    if (parsed.isEmpty())
        return false;
    *size = parsed;
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    if (args.size() < 2 || args.size() > 3) {
        err << "usage: quillmark-artwork IN.svg OUT.png [WIDTHxHEIGHT]\n";
        return Usage;
    }

    QSvgRenderer renderer(args.at(0));
    if (!renderer.isValid()) {
        err << "quillmark-artwork: cannot read " << args.at(0) << "\n";
        return BadSvg;
    }

    QSize size = renderer.defaultSize();
    if (args.size() == 3 && !parseSize(args.at(2), &size)) {
        err << "quillmark-artwork: bad size " << args.at(2) << " (expected WIDTHxHEIGHT)\n";
        return Usage;
    }

    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    renderer.render(&painter);
    painter.end();

    const QFileInfo out(args.at(1));
    if (!QDir().mkpath(out.absolutePath()) || !image.save(out.absoluteFilePath(), "PNG")) {
        err << "quillmark-artwork: cannot write " << args.at(1) << "\n";
        return WriteFailed;
    }
    return Ok;
}
