#include "control/MapBag.h"
#include "support/DiskFaults.h"

#include <zephrin/FormPropertyBag.h>
#include <zephrin/Zephrin.h>
#include <zephrin/ado/Error.h>

#include <QColor>
#include <QFile>
#include <QPixmap>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>

namespace zephrin {

namespace {

constexpr const char* before = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- Ours: ä € 😀 --><ui version="4.0">
 <class>Host</class>
 <widget class="QWidget" name="Host">
  <property name="windowTitle"><string>A &amp; B</string></property>
  <property name="toolTip"><string><![CDATA[ <widget name="builder"> ]]></string   ></property>
)";
constexpr const char* after = R"(
  <widget class="QLabel" name="label"><property name="text"><string comment="c">x</string></property></widget>
 </widget>
 <resources  ><include location="none.qrc"/></resources>
</ui>
)";

/// A form file with `widget` in the middle of it.
class Form {
 public:
    explicit Form(const QByteArray& widget) { Put(before + widget + after); }

    void Put(const QByteArray& bytes) const {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray Bytes() const {
        QFile file(Path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// What stands in the place of `widget`; the whole file when something else has changed.
    std::string Widget() const {
        const QByteArray bytes = Bytes();
        const qsizetype front = qstrlen(before), back = qstrlen(after);
        if (!bytes.startsWith(before) || !bytes.endsWith(after)) return bytes.toStdString();
        return bytes.mid(front, bytes.size() - front - back).toStdString();
    }
    QString Path() const { return folder.filePath(QStringLiteral("host.ui")); }
    FormPropertyBag Open(const char* name = "builder") const { return {Path(), QLatin1StringView(name)}; }

 private:
    QTemporaryDir folder;
};

constexpr const char* emptyWidget = "  <widget class=\"zephrin::Zephrin\" name=\"builder\"/>";

/// What `action` throws, or "".
std::string Thrown(const std::function<void()>& action) {
    try {
        action();
    } catch (const ado::Error& error) {
        return std::to_string(error.Number()) + ' ' +
               error.Description().section(QStringLiteral("host.ui: "), -1).toStdString();
    }
    return {};
}

}  // namespace

TEST(FormBag, ReadsWhatDesignerWrites) {
    const auto text = [](const char* value) { return QVariant(QString::fromUtf8(value)); };
    QFont font(QStringLiteral("Serif"), 14);
    font.setBold(true);
    font.setItalic(true);
    font.setKerning(false);
    font.setStyleStrategy(QFont::NoAntialias);
    struct Row {
        const char* Element;
        QVariant Expected;
    };
    const Row rows[] = {
        {"<bool>true</bool>", true},
        {"<bool>false</bool>", false},
        {"<number>-5</number>", -5},
        {"<number>many</number>", QVariant()},
        {"<UInt>2147483653</UInt>", 2147483653U},
        {"<longlong>5000000000</longlong>", 5000000000LL},
        {"<double>0.5</double>", 0.5},
        {"<string>a&lt;b&gt; \n&#13;c </string>", text("a<b> \n\rc ")},
        {"<string notr=\"true\"><![CDATA[<&]]></string>", text("<&")},
        {"<string/>", text("")},
        {"<color><red>1</red><green>2</green><blue>3</blue></color>", QColor(1, 2, 3)},
        {"<color alpha=\"7\"><red>1</red><green>2</green><blue>3</blue></color>", QColor(1, 2, 3, 7)},
        {"<font><family>Serif</family><pointsize>14</pointsize><weight>75</weight><italic>true</italic>"
         "<bold>true</bold><kerning>false</kerning><stylestrategy>NoAntialias</stylestrategy></font>",
         font},
        {"<font/>", QFont()},
        {"<palette><active/></palette>", QVariant()},
        {"", QVariant()},
    };
    for (const Row& row : rows) {
        const Form form(QByteArray("<widget name=\"builder\"><property name=\"p\">\n ") + row.Element +
                        "\n</property></widget>");
        EXPECT_EQ(form.Open().ReadProperty(QStringLiteral("p"), QVariant()), row.Expected) << row.Element;
        EXPECT_EQ(form.Open().ReadProperty(QStringLiteral("q"), 3), QVariant(3));
    }
}

TEST(FormBag, ReadsOnlyThePropertiesOfItsWidget) {
    const Form form(
        R"(<widget name="builder"><layout><property name="p"><number>1</number></property></layout>
        <property name="p"><number>2</number></property><attribute name="p"><number>3</number></attribute>
        <widget name="inner"><property name="p"><number>4</number></property></widget></widget>)");
    EXPECT_EQ(form.Open().ReadProperty(QStringLiteral("p"), 0), QVariant(2));
    EXPECT_EQ(form.Open("inner").ReadProperty(QStringLiteral("p"), 0), QVariant(4));
    EXPECT_EQ(form.Open("Host").ReadProperty(QStringLiteral("windowTitle"), 0),
              QVariant(QStringLiteral("A & B")));
    EXPECT_EQ(form.Open("label").ReadProperty(QStringLiteral("text"), 0), QVariant(QStringLiteral("x")));
}

TEST(FormBag, WritesWhatDesignerReads) {
    QFont font(QStringLiteral("Serif"), 14);
    font.setItalic(true);
    struct Row {
        const char* Name;
        QVariant Value;
        const char* Lines;  ///< the element, as it stands between the tags of the property
    };
    const Row rows[] = {
        {"ZPBModalForm", -1, "   <bool>true</bool>\n"},
        {"ZPBModalForm", 0, "   <bool>false</bool>\n"},
        {"ConnectionTimeout", -7, "   <number>-7</number>\n"},
        {"ZPBLabelBackColor", 0x030201U,
         "   <color>\n    <red>1</red>\n    <green>2</green>\n    <blue>3</blue>\n   </color>\n"},
        {"ZPBLabelBackColor", 0x80000005U, "   <UInt>2147483653</UInt>\n"},
        {"ZPBLabelBackColor", 0x02000005U, "   <UInt>33554437</UInt>\n"},
        {"ZPBLabelFont", font,
         "   <font>\n    <family>Serif</family>\n    <pointsize>14</pointsize>\n    <italic>true</italic>\n  "
         " "
         "</font>\n"},
        {"ZPBLabelFont", QFont(), "   <font/>\n"},
        {"ZPBTableString", QStringLiteral("a\nb\r<&> "),
         "   <string notr=\"true\">a\nb&#13;&lt;&amp;&gt; </string>\n"},
        {"ZPBRunTimeControlCaption", QStringLiteral("\u00c4"), "   <string>\u00c4</string>\n"},
        {"OfAHost", 0.5, "   <double>0.5</double>\n"},
    };
    for (const Row& row : rows) {
        const Form form(emptyWidget);
        FormPropertyBag bag = form.Open();
        bag.WriteProperty(QLatin1StringView(row.Name), row.Value);
        EXPECT_EQ(form.Widget(), emptyWidget) << "nothing reaches the disk before it is saved";
        bag.Save();
        EXPECT_EQ(
            form.Widget(), "  <widget class=\"zephrin::Zephrin\" name=\"builder\">\n   <property name=\"" +
                               std::string(row.Name) + "\" stdset=\"0\">\n " +
                               [&] {
                                   // The lines of a text are not indented, those of an element are.
                                   QString lines = QString::fromUtf8(row.Lines).chopped(1);
                                   if (!lines.contains(QLatin1StringView("<string")))
                                       lines.replace(u'\n', QStringLiteral("\n "));
                                   return lines.toStdString();
                               }() +
                               "\n   </property>\n  </widget>");
        const QVariant read = form.Open().ReadProperty(QLatin1StringView(row.Name), QVariant());
        Zephrin control, other;
        control.setProperty(row.Name, row.Value);
        other.setProperty(row.Name, read);
        EXPECT_EQ(control.property(row.Name), other.property(row.Name)) << row.Name;
    }
}

TEST(FormBag, PutsPropertiesWhereTheyBelong) {
    struct Row {
        const char* What;
        QByteArray Widget;
        QByteArray Outcome;
    };
    const auto at = [](const QByteArray& indent) {
        return indent + "<property name=\"n\" stdset=\"0\">\n" + indent + " <number>5</number>\n" + indent +
               "</property>";
    };
    const Row rows[] = {
        {"in an empty widget", "\t<widget name=\"builder\"></widget>",
         "\t<widget name=\"builder\">\n" + at("\t ") + "</widget>"},
        {"in the place of the old value",
         "  <widget name=\"builder\">\n     <property name=\"n\"><number>4</number></property>\n  </widget>",
         "  <widget name=\"builder\">\n" + at("     ") + "\n  </widget>"},
        {"in the place of nothing", "  <widget name=\"builder\">\n   <property name=\"n\"/>\n  </widget>",
         "  <widget name=\"builder\">\n" + at("   ") + "\n  </widget>"},
        {"behind the others",
         "  <widget name=\"builder\">\n   <property name=\"m\"><bool>true</bool></property>\n   <layout/>\n  "
         "</widget>",
         "  <widget name=\"builder\">\n   <property name=\"m\"><bool>true</bool></property>\n" + at("   ") +
             "\n   <layout/>\n  </widget>"},
        {"nowhere, when it says so already",
         "<widget name=\"builder\"><property  name='n'><number> 5</number></property></widget>",
         "<widget name=\"builder\"><property  name='n'><number> 5</number></property></widget>"},
    };
    for (const Row& row : rows) {
        const Form form(row.Widget);
        FormPropertyBag bag = form.Open();
        bag.WriteProperty(QStringLiteral("n"), 5);
        bag.Save();
        EXPECT_EQ(form.Widget(), row.Outcome.toStdString()) << row.What;
    }
}

TEST(FormBag, KeepsTheNotesForTranslatorsAndTheWayOfTheFile) {
    const Form form(R"(<widget name="builder"><property name="ZPBRunTimeControlCaption" stdset="0">
     <string comment="of the wizard" extracomment="&quot;">Old</string></property></widget>)");
    FormPropertyBag bag = form.Open();
    bag.WriteProperty(QStringLiteral("ZPBRunTimeControlCaption"), QStringLiteral("New"));
    bag.Save();
    EXPECT_TRUE(
        form.Bytes().contains("<string comment=\"of the wizard\" extracomment=\"&quot;\">New</string>"));

    form.Put("\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<ui>\r\n <widget name=\"builder\"/>\r\n</ui>\r\n");
    FormPropertyBag other = form.Open();
    other.WriteProperty(QStringLiteral("n"), 5);
    other.Save();
    EXPECT_EQ(
        form.Bytes().toStdString(),
        "\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<ui>\r\n <widget name=\"builder\">\r\n  <property name=\"n\" "
        "stdset=\"0\">\r\n   <number>5</number>\r\n  </property>\r\n </widget>\r\n</ui>\r\n");
}

TEST(FormBag, KeepsIconsByTheirFiles) {
    const QByteArray widget =
        "<widget name=\"builder\"><property name=\"ZPBRunTimeControlIcon\">"
        "<iconset resource=\"a.qrc\"><normaloff>icon.png</normaloff>icon.png</iconset></property></widget>";
    const Form form(widget);
    const auto icon = [&form] {
        return form.Open().ReadProperty(QStringLiteral("ZPBRunTimeControlIcon"), QIcon()).value<QIcon>();
    };
    const auto write = [&form](const QIcon& value) {
        FormPropertyBag bag = form.Open();
        bag.WriteProperty(QStringLiteral("ZPBRunTimeControlIcon"), value);
        bag.Save();
        return form.Widget();
    };
    QPixmap pixels(16, 16);
    pixels.fill(Qt::red);
    EXPECT_EQ(write(QIcon()), widget.toStdString()) << "an icon that is not at hand here may be elsewhere";
    ASSERT_TRUE(pixels.save(QFileInfo(form.Path()).absolutePath() + QStringLiteral("/icon.png")));
    EXPECT_EQ(icon().pixmap(16).toImage().pixelColor(3, 3), QColor(Qt::red));
    EXPECT_EQ(write(icon()), widget.toStdString());
    EXPECT_EQ(write(QIcon(pixels)), widget.toStdString())
        << "it has no name under which a form could keep it";
    EXPECT_EQ(write(QIcon()), "<widget name=\"builder\"></widget>");
}

TEST(FormBag, RefusesDamagedFormsAndLeavesThemAlone) {
    struct Row {
        const char* Bytes;
        const char* Error;
    };
    const Row rows[] = {
        {"", "3001 Premature end of document. (line 1)"},
        {"<ui>\n<widget name=\"builder\">\n</ui>", "3001 Opening and ending tag mismatch. (line 3)"},
        {"<ui><widget name=\"builder\"/></ui><ui/>", "3001 Extra content at end of document. (line 1)"},
        {"<ui><widget name=\"builder\"/>", "3001 Premature end of document. (line 1)"},
        {"<html><widget name=\"builder\"/></html>", "3001 This is no form of Qt Designer."},
        {"<!DOCTYPE ui [<!ENTITY b 'builder'>]><ui><widget name=\"builder\"/></ui>",
         "3001 A form with a document type cannot be edited. (line 1)"},
        {"<ui>\xFF<widget name=\"builder\"/></ui>", "3001 The form is not in UTF-8."},
        {"<ui><widget name=\"Builder\"/><x name=\"builder\"/></ui>",
         "3265 The form has no widget named 'builder'."},
    };
    for (const Row& row : rows) {
        const Form form("");
        form.Put(row.Bytes);
        EXPECT_EQ(Thrown([&] { form.Open(); }), row.Error) << row.Bytes;
        EXPECT_EQ(form.Bytes(), QByteArray(row.Bytes));
    }
    EXPECT_EQ(Thrown([] { FormPropertyBag(QStringLiteral("/nowhere/host.ui"), QString()); }),
              "3709 The file cannot be found.");
}

TEST(FormBag, RefusesValuesThatNoFormCanHold) {
    const Form form(emptyWidget);
    FormPropertyBag bag = form.Open();
    const QVariant values[] = {QStringLiteral("a\u0001b"), QString(QChar(0xD800)), QString(QChar(0xFFFE)),
                               QVariant(), QVariant::fromValue(QList<int>{1})};
    for (const QVariant& value : values)
        EXPECT_EQ(Thrown([&] { bag.WriteProperty(QStringLiteral("p"), value); }),
                  "-2147217887 A form cannot hold this value of p.");
    bag.Save();
    EXPECT_EQ(form.Widget(), emptyWidget);
}

TEST(FormBag, SavesNothingOverTheWorkOfOthers) {
    const Form form(emptyWidget);
    FormPropertyBag bag = form.Open();
    form.Put("<ui/>");
    bag.Save();
    bag.WriteProperty(QStringLiteral("p"), 1);
    EXPECT_EQ(Thrown([&] { bag.Save(); }), "3004 The file was changed by another program in the meantime.");
    EXPECT_EQ(form.Bytes(), "<ui/>");
}

TEST(FormBag, AFaultOfTheDiskLosesNothing) {
    const Form form(emptyWidget);
    test::TryFaultsOfTheDisk<ado::Error>(form.Path(), [&] {
        FormPropertyBag bag = form.Open();
        bag.WriteProperty(QStringLiteral("p"), 1);
        bag.Save();
    });
}

TEST(FormBag, IsTakenByTheCompilerOfForms) {
    const Form form(emptyWidget);
    Zephrin control;
    control.SetZPBLabelBackColor(0x030201U);
    control.SetZPBRunTimeControlCaption(QStringLiteral("A \"caption\""));
    control.SetZPBLabelFont(QFont(QStringLiteral("Serif"), 14));
    FormPropertyBag bag = form.Open();
    control.WriteProperties(bag);
    bag.Save();
    QProcess uic;
    uic.start(QStringLiteral(UIC_PROGRAM), {form.Path()});
    ASSERT_TRUE(uic.waitForFinished());
    EXPECT_EQ(uic.readAllStandardError().toStdString(), "");
    const QByteArray code = uic.readAllStandardOutput();
    const char* lines[] = {
        "builder->setProperty(\"ZPBLabelBackColor\", QVariant(QColor(1, 2, 3)));",
        "builder->setProperty(\"ZPBLabelForeColor\", QVariant(2147483653u));",
        "builder->setProperty(\"ZPBAllowSQLReset\", QVariant(true));",
        "builder->setProperty(\"ConnectionTimeout\", QVariant(60));",
        "builder->setProperty(\"ZPBRunTimeControlCaption\", "
        "QVariant(QCoreApplication::translate(\"Host\", \"A \\\"caption\\\"\", nullptr)));",
        "font.setFamilies({QString::fromUtf8(\"Serif\")});",
    };
    for (const char* line : lines) EXPECT_TRUE(code.contains(line)) << line << '\n' << code.constData();
}

TEST(FormBag, BringsAControlBack) {
    const Form form(emptyWidget);
    Zephrin control;
    control.SetZPBAllowTableSelection(false);
    control.SetZPBLabelForeColor(0x80000012U);
    control.SetZPBLabelBackColor(0);
    control.SetZPBConnectionString(QStringLiteral("Provider=SQLite;Password=\"a<&>'\u20ac\""));
    control.SetZPBTableString(QStringLiteral(";[a];[b]"));
    for (int round = 0; round < 2; ++round) {
        FormPropertyBag bag = form.Open();
        control.WriteProperties(bag);
        bag.Save();
        Zephrin other;
        other.ReadProperties(form.Open());
        test::MapBag mine, others;
        control.WriteProperties(mine);
        other.WriteProperties(others);
        EXPECT_EQ(test::MapBag::Picture(mine.Values), test::MapBag::Picture(others.Values));
    }
    const QByteArray saved = form.Bytes();
    FormPropertyBag bag = form.Open();
    control.WriteProperties(bag);
    bag.Save();
    EXPECT_EQ(form.Bytes(), saved);
}

}  // namespace zephrin
