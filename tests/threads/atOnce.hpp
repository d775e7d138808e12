#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

/// Runs \p body in eight threads which begin together. What each answered.
template <class Body> std::vector<std::string> AtOnce(Body body)
{
    std::vector<std::string> answers(8);
    std::atomic<std::size_t> absent(answers.size());
    std::vector<std::thread> threads;
    for (std::string& answer : answers)
        threads.emplace_back([&absent, &answer, &body] {
            --absent;
            while (absent != 0) std::this_thread::yield();
            answer = body();
        });
    for (std::thread& thread : threads) thread.join();
    return answers;
}
