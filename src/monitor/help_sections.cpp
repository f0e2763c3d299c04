// Help file sections: I05FCBD1 (search, printing with page control) and
// helpSection, which the monitor's commands call for their help.
#include "monitor/help_sections.h"

#include "core/console_layer.h"
#include "core/e4dataset.h"
#include "core/sysinf.h"
#include "platform/units.h"
#include "textfile/file_spec.h"
#include "core/string_tools.h"

#include <cctype>
#include <string>

namespace {

constexpr std::size_t kHelpLineWidth = 128;

// The text without blanks, letters in upper case.
std::string reduced(std::string_view text) {
    std::string out;
    for (char c : text) {
        if (!isWhiteChar(c)) out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, static_cast<std::size_t>(R02LEN(text))));
}

// One showing of the help file: the reduced prefix and section, the output
// channel and the lines written so far.
struct HelpPrinter {
    int fileChannel;
    int outChannel;
    std::string prefix;
    std::string section;
    int count = 0;

    bool isHeader(const std::string& red) const { return red.compare(0, prefix.size(), prefix) == 0; }
    bool isWanted(const std::string& red) const {
        return isHeader(red) && red.compare(prefix.size(), section.size(), section) == 0;
    }
    bool onTerminal() const { return writerChannel(outChannel) == sysinf.outUnit; }

    enum class Pause { None, Go, Stop };

    // At the end of a page on the terminal: asks whether to go on.
    Pause pause() const {
        const int page = sysinf.screenH - 2;
        if (!onTerminal() || page < 1 || (count + 1) % page != 0) return Pause::None;
        I05ASK("===> Enter \"E\" to quit or press CR for more information", 0);
        std::string reply(1, ' ');
        int length = 0;
        int status = 0;
        I05RSL(sysinf.inUnit, reply, length, "", status);
        if (status != 0) unit::endOpenRecord(sysinf.outUnit);
        const unsigned char c = static_cast<unsigned char>(reply[0]);
        return (c == 'E' || c == 'e' || c == 0xC5) ? Pause::Stop : Pause::Go;
    }

    // Prints one body line; returns 0, 1 for a stop at the pause, or -2
    // with the write's failure code.
    int print(std::string_view record, int& failure) {
        std::string text = trimmed(record);
        if (text.empty()) {
            text = " ";
        } else if (onTerminal()) {
            text = " " + text;
            if (text.size() > kHelpLineWidth) text.resize(kHelpLineWidth);
        }
        const Pause p = pause();
        if (p == Pause::Stop) return 1;
        // On a console with line control "+" writes over the question.
        if (p == Pause::Go) text[0] = '+';
        failure = write(writerChannel(outChannel), "(A)", text);
        if (failure != 0) return -2;
        ++count;
        return 0;
    }

    // Reads the file to its end; the status of I05FCBD1.
    int run() {
        bool searching = !prefix.empty();
        std::string record;
        while (true) {
            int io = unit::readRecord(fileChannel, record);
            if (io == unit::IOSTAT_END) return 0;
            if (io != 0) return fail(io);
            if (record.size() > kHelpLineWidth) record.resize(kHelpLineWidth);
            const std::string red = reduced(record);
            if (searching) {
                searching = !isWanted(red);
                continue;
            }
            if (!prefix.empty() && isHeader(red)) {
                searching = !isWanted(red);  // a header of the same section goes on
                continue;
            }
            int failure = 0;
            int st = print(record, failure);
            if (st == -2) return fail(failure);
            if (st == 1) return 1;
        }
    }

    static int fail(int code) {
        I05ERR("I05FCBD1", code);
        return -2;
    }
};

}  // namespace

void I05FCBD1(int fileChannel, int outChannel, std::string_view fileName, std::string_view prefix,
              std::string_view section, int& status) {
    HelpPrinter printer{fileChannel, outChannel, reduced(prefix), reduced(section)};
    unit::close(fileChannel);
    std::string name(fileName);
    if (name.size() < static_cast<std::size_t>(kFileNameWidth)) name.resize(kFileNameWidth, ' ');
    int result = 0;
    Z1OPN1(fileChannel, name, "READ", "OLD", result);
    if (result != 0) {
        status = -1;
        return;
    }
    status = printer.run();
    if (status == 0 && printer.count == 0) {
        std::string what = trimmed(prefix) + " " + trimmed(section);
        write(writerChannel(outChannel), "(1X,A)", "I05FCBD1 --- No information for " + trimmed(what));
        status = 2;
    }
    unit::close(fileChannel);
}

int helpSection(std::string_view section) {
    int status = 0;
    I05FCBD1(kHelpFileChannel, sysinf.dwUnit, E4DataSet.hpName, kCommandHelpPrefix, section, status);
    return status;
}
