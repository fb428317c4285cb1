#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QVector>

#include <grp.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

/** Somebody with an account on this machine. */
struct Person
{
    QByteArray user;
    QByteArray group;
    uid_t userId = 0;
    QVector<gid_t> groups; // the first one is the user's own

    static Person named(const char *name) { return of(::getpwnam(name)); }
    static Person self() { return of(::getpwuid(::geteuid())); }

    Person memberOf(const Person &other) const
    {
        Person member = *this;
        member.groups += other.groups.constFirst();
        return member;
    }

private:
    static Person of(const passwd *entry)
    {
        if (!entry)
            qFatal("expected an account");
        const struct ::group *group = ::getgrgid(entry->pw_gid);
        return {entry->pw_name, group ? group->gr_name : "", entry->pw_uid, {entry->pw_gid}};
    }
};

Q_DECLARE_METATYPE(Person)

/** Makes this process act as somebody for a while, as root can: connections are theirs then. */
class AsPerson
{
public:
    static bool isPossible() { return ::getuid() == 0; }

    explicit AsPerson(const Person &person)
    {
        if (isPossible())
            become(person);
    }
    ~AsPerson()
    {
        if (!isPossible() || ::seteuid(0) != 0)
            return;
        become(Person::named("root"));
        ::prctl(PR_SET_DUMPABLE, 1); // as before, for the sanitizers' leak check
    }
    Q_DISABLE_COPY(AsPerson)

private:
    static void become(const Person &person)
    {
        if (::setgroups(size_t(person.groups.size()), person.groups.constData()) != 0 ||
            ::setegid(person.groups.constFirst()) != 0 || ::seteuid(person.userId) != 0)
            qFatal("cannot become %s", person.user.constData());
    }
};
