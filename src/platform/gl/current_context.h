#pragma once

namespace tessara {

/// What is current on a thread for OpenGL, of whatever window system it is, or nothing. The context belongs to somebody
/// else and must be alive when it is made current again.
class CurrentContext {
public:
    /// What is current on the calling thread.
    static CurrentContext Take() noexcept;

    /// Leaves the calling thread without a context. A context of one window system must go before one of another can
    /// come.
    static void Clear() noexcept;

    /// Makes this current on the calling thread, unless it is.
    void Restore() const noexcept;

    explicit operator bool() const noexcept { return context_ != nullptr; }
    friend bool operator==(const CurrentContext&, const CurrentContext&) noexcept = default;

private:
    enum class Kind { None, Egl, Glx, Wgl };

    Kind kind_ = Kind::None;
    void* display_ = nullptr;
    void* context_ = nullptr;
    void* draw_ = nullptr;  // surfaces, or drawables as numbers
    void* read_ = nullptr;
};

/// Keeps what is current on the thread, and makes it current again at the end of its life.
class ContextKeeper {
public:
    ContextKeeper() noexcept : kept_(CurrentContext::Take()) {}
    ContextKeeper(const ContextKeeper&) = delete;
    ContextKeeper& operator=(const ContextKeeper&) = delete;
    ~ContextKeeper() { kept_.Restore(); }

    const CurrentContext& Kept() const noexcept { return kept_; }

private:
    CurrentContext kept_;
};

}  // namespace tessara
