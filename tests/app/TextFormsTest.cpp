#include "app/MainWindowFixture.h"
#include "files/Import.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QInputDialog>
#include <QListWidget>
#include <QTableWidget>

namespace tavex2::test {
namespace {

/// Comments, labels and units, driven through the forms' widgets and read back from a saved file.
class TextFormsTest : public MainWindowTest {
  protected:
    static void click(QWidget& dialog, const char* name) {
        dialog.findChild<QAbstractButton*>(QLatin1String(name))->click();
    }
    /// Answers the next input box.
    static WhenDialogOpens answer(const QString& text, const QString& expectedProposal = {}) {
        return {"InputBox", [text, expectedProposal](QWidget& box) {
                    auto& input = dynamic_cast<QInputDialog&>(box);
                    EXPECT_EQ(input.textValue(), expectedProposal);
                    input.setTextValue(text);
                    input.accept();
                }};
    }
    LmbFile saved() {
        saveAs(QString::fromStdString((folder / "texts.lmb").string()));
        auto read = readLmbFile(folder / "texts.lmb");
        EXPECT_TRUE(read);
        return std::move(read).value();
    }
};

TEST_F(TextFormsTest, CommentsAreEnteredAndSavedWithTheTrial) {
    start();
    collect();
    WhenDialogOpens comments("frmComments", [](QWidget& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Add or Edit Comments"));
        auto& grid = *form.findChild<QTableWidget*>(QStringLiteral("grdComments"));
        EXPECT_EQ(grid.item(2, 0)->text(), QStringLiteral("Line 3"));
        WhenDialogOpens box = answer(QStringLiteral("left leg, 20 \u00B0C"));
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(1, 1)).center());
        EXPECT_TRUE(box.opened());
        EXPECT_EQ(grid.item(1, 1)->text(), QStringLiteral("left leg, 20 \u00B0C"));
        click(form, "cmdDateTime");
        EXPECT_TRUE(grid.item(3, 1)->text().startsWith(QLatin1String("Date & time:   ")));
        click(form, "cmdSave");
    });
    action("mnuEdit_0").trigger();
    ASSERT_TRUE(comments.opened());
    const LmbFile file = saved();
    EXPECT_EQ(file.comments[1].trimmed(), "left leg, 20 \xB0"
                                          "C");
    EXPECT_TRUE(file.comments[3].trimmed().ends_with(" for trial 0001"));
}

TEST_F(TextFormsTest, TheCommentsFormOpensAfterEachTrialWhereTheSetupSaysSo) {
    start({"Duration=0.05", "DIOMask=0", "Comments=1"});
    WhenDialogOpens comments("frmComments", [](QWidget& form) {
        auto& grid = *form.findChild<QTableWidget*>(QStringLiteral("grdComments"));
        WhenDialogOpens box = answer(QStringLiteral("by key"));
        grid.setCurrentCell(0, 0);
        grid.setFocus();
        EXPECT_TRUE(waitFor([&grid] { return grid.hasFocus(); }));
        QTest::keyClick(&grid, Qt::Key_Return);
        EXPECT_TRUE(box.opened());
        click(form, "cmdClear");
        EXPECT_EQ(grid.item(0, 1)->text(), QString());
        click(form, "cmdCancel");
    });
    button("Collect").click();
    ASSERT_TRUE(waitFor([&] { return comments.opened() && !button("Stop").isEnabled(); }));
    EXPECT_EQ(window().windowTitle(), QStringLiteral("Trial0001 (Unsaved)"));
}

TEST_F(TextFormsTest, LabelsAndUnitsAreEnteredAndSavedWithTheTrial) {
    start();
    collect();
    WhenDialogOpens labels("frmLabels", [](QWidget& form) {
        EXPECT_EQ(form.windowTitle(), QStringLiteral("Channel Labels and Units"));
        auto& names = *form.findChild<QListWidget*>(QStringLiteral("lstLabels"));
        auto& units = *form.findChild<QListWidget*>(QStringLiteral("lstUnits"));
        ASSERT_EQ(names.count(), 2);
        EXPECT_EQ(form.findChild<QListWidget*>(QStringLiteral("lstNums"))->item(1)->text(), QStringLiteral("01"));
        EXPECT_EQ(names.item(0)->text(), QStringLiteral("Channel 00"));
        EXPECT_EQ(units.toolTip(), QStringLiteral("Clcik to enter a new unit"));
        {
            WhenDialogOpens box = answer(QStringLiteral("Gastrocnemius"), QStringLiteral("Channel 01"));
            QTest::mouseClick(names.viewport(), Qt::LeftButton, {}, names.visualItemRect(names.item(1)).center());
            EXPECT_TRUE(box.opened());
        }
        EXPECT_EQ(names.item(1)->text(), QStringLiteral("Gastrocnem"));
        {
            WhenDialogOpens box = answer(QStringLiteral("\u00B5V"), QStringLiteral("V"));
            QTest::mouseClick(units.viewport(), Qt::LeftButton, {}, units.visualItemRect(units.item(0)).center());
            EXPECT_TRUE(box.opened());
        }
        click(form, "cmdSelect");
        EXPECT_EQ(units.item(1)->text(), QStringLiteral("\u00B5V"));
        click(form, "cmdExit");
    });
    action("mnuEdit_2").trigger();
    ASSERT_TRUE(labels.opened());
    const LmbFile file = saved();
    EXPECT_EQ(file.header.Labels[1].trimmed(), "Channel 00");
    EXPECT_EQ(file.header.Labels[2].trimmed(), "Gastrocnem");
    EXPECT_EQ(file.header.Units[2].trimmed(), "\xB5V");
}

TEST_F(TextFormsTest, OptionButtonsChooseTheChannelThatIsEdited) {
    start({"Channels=0:16", "Duration=0.05", "DIOMask=0"});
    collect();
    WhenDialogOpens labels("frmLabels", [](QWidget& form) {
        const auto option = [&form](int index) {
            return form.findChild<QAbstractButton*>(QStringLiteral("option1_%1").arg(index));
        };
        auto& names = *form.findChild<QListWidget*>(QStringLiteral("lstLabels"));
        ASSERT_NE(form.findChild<QWidget*>(QStringLiteral("fraOptions")), nullptr);
        EXPECT_TRUE(option(1)->isChecked());
        QTest::mouseClick(option(3), Qt::LeftButton, {}, QPoint(8, option(3)->height() / 2));
        EXPECT_EQ(names.currentRow(), 2);
        EXPECT_TRUE(waitFor([&] {
            form.activateWindow();
            option(3)->setFocus();
            return option(3)->hasFocus();
        }));
        {
            WhenDialogOpens box = answer(QStringLiteral("  left"), QStringLiteral("Channel 02"));
            QTest::keyClick(option(3), Qt::Key_Return);
            EXPECT_TRUE(box.opened());
        }
        EXPECT_EQ(names.item(2)->text(), QStringLiteral("  left")) << "blanks in front stay";
        EXPECT_TRUE(option(3)->isChecked());
        names.setCurrentRow(15);
        EXPECT_TRUE(option(16)->isChecked());
        names.setCurrentRow(16);
        for (int index = 1; index <= 16; ++index)
            EXPECT_FALSE(option(index)->isChecked()) << "the seventeenth channel has no button";
        click(form, "cmdExit");
    });
    action("mnuEdit_2").trigger();
    ASSERT_TRUE(labels.opened());
    EXPECT_EQ(saved().header.Labels[3].text(), "  left");
}

TEST_F(TextFormsTest, CheckBoxesChooseTheChannelsOfThePreview) {
    start({"Channels=0:3", "Duration=0.05", "DIOMask=0"});
    collect();
    WhenDialogOpens labels("frmLabels", [](QWidget& form) {
        const auto box = [&form](int index) {
            return form.findChild<QAbstractButton*>(QStringLiteral("chkChoose_%1").arg(index));
        };
        auto& preview = *form.findChild<QListWidget*>(QStringLiteral("lstPreview"));
        ASSERT_NE(form.findChild<QWidget*>(QStringLiteral("fraCheckbox")), nullptr);
        for (int index = 1; index <= 16; ++index) {
            EXPECT_FALSE(box(index)->isChecked());
            EXPECT_EQ(box(index)->isEnabled(), index <= 4) << index;
        }
        EXPECT_EQ(preview.count(), 4) << "all of them where none is chosen";
        QTest::mouseClick(box(2), Qt::LeftButton, {}, QPoint(8, box(2)->height() / 2));
        ASSERT_EQ(preview.count(), 1);
        EXPECT_EQ(preview.item(0)->text(), QStringLiteral("Channel 01 (V)"));
        auto& units = *form.findChild<QListWidget*>(QStringLiteral("lstUnits"));
        WhenDialogOpens input = answer(QStringLiteral("N"), QStringLiteral("V"));
        QTest::mouseClick(units.viewport(), Qt::LeftButton, {}, units.visualItemRect(units.item(1)).center());
        EXPECT_TRUE(input.opened());
        EXPECT_EQ(preview.item(0)->text(), QStringLiteral("Channel 01 (N)"));
        click(form, "cmdSelect");
        EXPECT_EQ(units.item(3)->text(), QStringLiteral("N")) << "copied to all channels, chosen or not";
        click(form, "cmdExit");
    });
    action("mnuEdit_2").trigger();
    ASSERT_TRUE(labels.opened());
}

TEST_F(TextFormsTest, LabelsAndUnitsAreToldInTheLegendAndTheChannelList) {
    start();
    auto& legend = child<QWidget>("frmLegend");
    const auto tip = [&](const char* name) { return legend.findChild<QWidget*>(QLatin1String(name))->toolTip(); };
    EXPECT_EQ(tip("shpColour_1"), QStringLiteral("Channel 01 (V)"));
    WhenDialogOpens labels("frmLabels", [](QWidget& form) {
        auto& units = *form.findChild<QListWidget*>(QStringLiteral("lstUnits"));
        WhenDialogOpens box = answer(QStringLiteral("\u00B5V"), QStringLiteral("V"));
        QTest::mouseClick(units.viewport(), Qt::LeftButton, {}, units.visualItemRect(units.item(1)).center());
        EXPECT_TRUE(box.opened());
        click(form, "cmdExit");
    });
    collect();
    action("mnuEdit_2").trigger();
    ASSERT_TRUE(labels.opened());
    EXPECT_EQ(tip("shpColour_1"), QStringLiteral("Channel 01 (\u00B5V)"));
    EXPECT_EQ(tip("lblChannel_1"), QStringLiteral("Channel 01 (\u00B5V)"));

    WhenDialogOpens info("frmInfo", [](QWidget& form) {
        auto& channels = *form.findChild<QComboBox*>(QStringLiteral("cbChannels"));
        EXPECT_EQ(channels.itemText(0), QStringLiteral("Channel 0")) << "nothing was entered for it";
        EXPECT_EQ(channels.itemText(1), QStringLiteral("Channel 1  Channel 01 (\u00B5V)"));
        form.close();
    });
    action("mnuInfo").trigger();
    EXPECT_TRUE(info.opened());
}

TEST_F(TextFormsTest, ACharacterThatFilesCannotHoldIsTold) {
    start();
    WhenDialogOpens comments("frmComments", [](QWidget& form) {
        auto& grid = *form.findChild<QTableWidget*>(QStringLiteral("grdComments"));
        WhenDialogOpens box = answer(QStringLiteral("10 k\u03A9"));
        WhenDialogOpens told("MessageBox", [](QWidget& message) { message.close(); });
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(1, 1)).center());
        EXPECT_TRUE(box.opened());
        EXPECT_TRUE(told.opened());
        EXPECT_EQ(grid.item(1, 1)->text(), QStringLiteral("10 k?"));
        click(form, "cmdCancel");
    });
    action("mnuEdit_0").trigger();
    ASSERT_TRUE(comments.opened());
}

TEST_F(TextFormsTest, CancellingTheLabelsPutsThemBack) {
    start();
    collect();
    for (const bool cancels : {true, false}) {
        WhenDialogOpens labels("frmLabels", [cancels](QWidget& form) {
            auto& names = *form.findChild<QListWidget*>(QStringLiteral("lstLabels"));
            EXPECT_EQ(names.item(0)->text(), QStringLiteral("Channel 00"));
            WhenDialogOpens box = answer(QStringLiteral("EMG"), QStringLiteral("Channel 00"));
            names.setCurrentRow(0);
            names.setFocus();
            EXPECT_TRUE(waitFor([&names] { return names.hasFocus(); }));
            QTest::keyClick(&names, Qt::Key_Return);
            EXPECT_TRUE(box.opened());
            click(form, cancels ? "cmdCancel" : "cmdExit");
        });
        action("mnuEdit_2").trigger();
        ASSERT_TRUE(labels.opened());
    }
    EXPECT_EQ(saved().header.Labels[1].trimmed(), "EMG");
}

} // namespace
} // namespace tavex2::test
