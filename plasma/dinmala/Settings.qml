// The page of the calendar in the clock's settings. Plasma shows one of each calendar that is switched on.
import QtQuick 2.15
import QtQuick.Controls 2.15

Item {
    signal configurationChanged

    function saveConfig() {}

    Label {
        anchors.fill: parent
        wrapMode: Text.WordWrap
        text: Qt.locale().name.startsWith("ne")
            ? "दिनमालाको मेनुमा छानिएको संस्करण यहाँ पनि देखिन्छ; अर्को महिनामा जाँदा लागू हुन्छ।"
            : "Shows the edition that is chosen in Dinmala's menu, from the next month that is opened on."
    }
}
