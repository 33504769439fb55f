// Help a person can find: Help > Keyboard Shortcuts lists every shortcut of the menus and
// the mouse gestures; the tools' tooltips name their keys; About names the version.
#include <QApplication>
#include <QDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QTableWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "ViewerHarness.h"

namespace qzviewtest {
namespace {

class HelpTest : public ViewerHarness {
protected:
    QAction* MenuAction(const QString& menu, const QString& name) {
        for (QAction* top : Window().menuBar()->actions()) {
            if (top->menu() != nullptr && top->text().remove('&') == menu) {
                for (QAction* action : top->menu()->actions()) {
                    if (action->objectName() == name) {
                        return action;
                    }
                }
            }
        }
        return nullptr;
    }

    /// The shortcuts window's rows as "keys | does".
    QStringList ShortcutRows() {
        QAction* open = MenuAction("Help", "help.shortcuts");
        EXPECT_NE(open, nullptr);
        if (open == nullptr) {
            return {};
        }
        open->trigger();
        Settle();
        auto* dialog = Window().findChild<QDialog*>("shortcuts");
        EXPECT_NE(dialog, nullptr);
        if (dialog == nullptr) {
            return {};
        }
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_FALSE(dialog->isModal());
        auto* table = dialog->findChild<QTableWidget*>("shortcuts.table");
        QStringList rows;
        for (int row = 0; row < table->rowCount(); ++row) {
            rows << table->item(row, 0)->text() + " | " + table->item(row, 1)->text();
        }
        return rows;
    }
};

TEST_F(HelpTest, KeyboardShortcutsListEveryMenuShortcutAndTheGestures) {
    Start();
    const QStringList rows = ShortcutRows();
    // Every action of the menus that has a shortcut is listed with it.
    int withShortcut = 0;
    for (QAction* top : Window().menuBar()->actions()) {
        emit top->menu()->aboutToShow();
        for (QAction* action : top->menu()->actions()) {
            if (action->shortcut().isEmpty()) {
                continue;
            }
            ++withShortcut;
            const QString keys = action->shortcut().toString(QKeySequence::NativeText);
            const QString text = action->text().remove('&');
            bool found = false;
            for (const QString& row : rows) {
                found = found || (row.contains(keys) && row.contains(text));
            }
            EXPECT_TRUE(found) << keys.toStdString() << " " << text.toStdString();
        }
    }
    EXPECT_GE(withShortcut, 15);
    EXPECT_TRUE(rows.contains("Ctrl+O | File > Open..."));
    EXPECT_TRUE(rows.contains("V | Tools > Selection"));
    EXPECT_TRUE(rows.contains("Ctrl+8 | Window > Info"));
    for (const char* gesture : {"Ctrl+click", "Alt+wheel", "Space+drag, middle-drag"}) {
        bool found = false;
        for (const QString& row : rows) {
            found = found || row.startsWith(QString::fromLatin1(gesture) + " | ");
        }
        EXPECT_TRUE(found) << gesture;
    }
}

TEST_F(HelpTest, ToolTooltipsNameTheirKeys) {
    Start();
    auto* tools = Window().findChild<QToolBar*>("toolbar.tools");
    ASSERT_NE(tools, nullptr);
    const QList<QAction*> actions = tools->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_TRUE(actions[0]->toolTip().startsWith("Selection (V)"));
    EXPECT_TRUE(actions[1]->toolTip().startsWith("Anchor Point (Y)"));
    EXPECT_TRUE(actions[2]->toolTip().startsWith("Rotation (W)"));
}

TEST_F(HelpTest, AboutNamesTheVersion) {
    Start();
    QAction* about = nullptr;
    for (QAction* action : Window().menuBar()->actions().last()->menu()->actions()) {
        if (action->text().remove('&') == "About qzview") {
            about = action;
        }
    }
    ASSERT_NE(about, nullptr);
    QString text;
    // The box is modal: it is read and closed from the event loop that it runs.
    QTimer::singleShot(0, [&text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box != nullptr) {
            text = box->text();
            box->accept();
        }
    });
    about->trigger();
    EXPECT_TRUE(text.contains(QStringLiteral("qzview " QZVIEW_VERSION))) << text.toStdString();
}

} // namespace
} // namespace qzviewtest
