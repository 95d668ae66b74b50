// A stand-in for a Winamp-2-compatible player, for tests under Windows or Wine: it registers the
// player's window class, answers the window-message queries from a state the test sets, and writes
// every message it receives to a record file, one line each:
//   start <pid> | ipc <lParam> <wParam> | file <name, UTF-8> <1 when the zero was inside cbData, else 0>
//   | command <id>
// Environment (inherited from the test, which starts it directly or through the link):
//   TAVO_FAKE_WINAMP_RECORD  the record file
//   TAVO_FAKE_WINAMP_DELAY   milliseconds before the window appears
//   TAVO_FAKE_WINAMP_NEVER   milliseconds to run without ever opening a window, then end
// The test changes the state with WM_COPYDATA records of kind 'TAV0' holding one UTF-8 line:
//   status|position|length|bitrate|samplerate|version|listpos <number>, title <text>,
//   hang <milliseconds> (stop answering for that long), close
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr ULONG_PTR kControl = 0x54415630;
constexpr UINT_PTR kLifetimeTimer = 1;
constexpr UINT kLifetimeMs = 120000; // a forgotten player ends by itself

struct State {
    long long status = 0, position = 0, length = -1, bitrate = 0, samplerate = 0, version = 0x2095;
    long long listPos = 0;
    std::vector<std::string> list;
} state;

FILE* recordFile = nullptr;

void record(const std::string& line) {
    if (!recordFile)
        return;
    std::fputs((line + "\n").c_str(), recordFile);
    std::fflush(recordFile);
}

std::string toUtf8(const std::wstring& text) {
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), nullptr, 0, nullptr, nullptr);
    std::string out(size_t(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), int(text.size()), out.data(), size, nullptr, nullptr);
    return out;
}

std::wstring decode(UINT codePage, const char* data, int size) {
    const int length = MultiByteToWideChar(codePage, 0, data, size, nullptr, 0);
    std::wstring out(size_t(length), L'\0');
    MultiByteToWideChar(codePage, 0, data, size, out.data(), length);
    return out;
}

long long envNumber(const char* name, long long fallback) {
    const char* value = std::getenv(name);
    return value && *value ? std::atoll(value) : fallback;
}

LRESULT answer(WPARAM wParam, LPARAM lParam) {
    record("ipc " + std::to_string(lParam) + " " + std::to_string(static_cast<long long>(LONG_PTR(wParam))));
    switch (lParam) {
    case 0:
        return LRESULT(state.version);
    case 101:
        state.list.clear();
        state.listPos = 0;
        return 0;
    case 104:
        return LRESULT(state.status);
    case 105:
        return LRESULT(wParam == 1 ? state.length : state.position);
    case 106:
        if (state.status == 0)
            return -1;
        state.position = (long long)(int(wParam));
        return 0;
    case 120:
    case 125:
        return LRESULT(state.listPos);
    case 124:
        return LRESULT(state.list.size());
    case 126:
        return LRESULT(wParam == 0 ? state.samplerate : wParam == 1 ? state.bitrate : 0);
    default:
        return 0;
    }
}

void control(HWND window, const std::string& line) {
    const size_t blank = line.find(' ');
    const std::string word = line.substr(0, blank);
    const std::string rest = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    const long long number = std::atoll(rest.c_str());
    if (word == "title") {
        const std::wstring title = decode(CP_UTF8, rest.data(), int(rest.size()));
        SetWindowTextW(window, title.c_str());
    } else if (word == "hang") {
        // The test goes on at once; this player takes no message until the time is up.
        ReplyMessage(1);
        Sleep(DWORD(number));
    } else if (word == "close") {
        PostMessageW(window, WM_CLOSE, 0, 0);
    } else if (word == "status") {
        state.status = number;
    } else if (word == "position") {
        state.position = number;
    } else if (word == "length") {
        state.length = number;
    } else if (word == "bitrate") {
        state.bitrate = number;
    } else if (word == "samplerate") {
        state.samplerate = number;
    } else if (word == "version") {
        state.version = number;
    } else if (word == "listpos") {
        state.listPos = number;
    }
}

void command(HWND window, WPARAM id) {
    record("command " + std::to_string(id));
    switch (id) {
    case 40001:
        DestroyWindow(window);
        break;
    case 40045:
        if (!state.list.empty())
            state.status = 1;
        break;
    case 40046:
        state.status = state.status == 1 ? 3 : state.status == 3 ? 1 : state.status;
        break;
    case 40047:
        state.status = 0;
        break;
    case 40158:
        state.listPos = state.list.empty() ? 0 : (long long)(state.list.size()) - 1;
        break;
    default:
        break;
    }
}

LRESULT CALLBACK windowProc(HWND window, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_USER:
        return answer(wParam, lParam);
    case WM_COMMAND:
        command(window, wParam);
        return 0;
    case WM_COPYDATA: {
        const auto* data = reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        const char* bytes = static_cast<const char*>(data->lpData);
        const int size = int(data->cbData);
        int length = 0;
        while (length < size && bytes[length] != '\0')
            ++length;
        if (data->dwData == kControl) {
            control(window, std::string(bytes, size_t(length)));
            return 1;
        }
        if (data->dwData != 100)
            return 0;
        // What arrives is what cbData covers: a count short of the bytes cuts the name.
        const std::string name = toUtf8(decode(CP_ACP, bytes, length));
        state.list.push_back(name);
        record("file " + name + " " + (length < size ? "1" : "0"));
        return 1;
    }
    case WM_TIMER:
        if (wParam == kLifetimeTimer)
            DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcW(window, msg, wParam, lParam);
    }
}

} // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    if (const char* path = std::getenv("TAVO_FAKE_WINAMP_RECORD"); path && *path)
        recordFile = std::fopen(path, "ab");
    record("start " + std::to_string(GetCurrentProcessId()));
    if (const long long never = envNumber("TAVO_FAKE_WINAMP_NEVER", 0); never > 0) {
        Sleep(DWORD(never));
        return 0;
    }
    Sleep(DWORD(envNumber("TAVO_FAKE_WINAMP_DELAY", 0)));

    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"Winamp v1.x";
    if (!RegisterClassW(&windowClass))
        return 1;
    HWND window = CreateWindowW(L"Winamp v1.x", L"Winamp 2.95", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                CW_USEDEFAULT, 275, 116, nullptr, nullptr, instance, nullptr);
    if (!window)
        return 1;
    SetTimer(window, kLifetimeTimer, kLifetimeMs, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (recordFile)
        std::fclose(recordFile);
    return 0;
}
