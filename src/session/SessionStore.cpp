#include "SessionStore.h"

SessionStore &sessionStore()
{
    static SessionStore store;
    return store;
}
