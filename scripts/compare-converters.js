// See compare-converters. Each package is called as its own documentation shows,
// text in and text out.
'use strict'
const fs = require('fs')

const [adFile, bsFile, adToBsTime, bsToAdTime] = process.argv.slice(2)
const read = file => fs.readFileSync(file, 'utf8').trim().split('\n')
const ad = read(adFile)
const bs = read(bsFile)
const pad = number => String(number).padStart(2, '0')
const dashed = (year, month, day) => `${year}-${pad(month)}-${pad(day)}`
const localDate = text => new Date(Number(text.slice(0, 4)), Number(text.slice(5, 7)) - 1, Number(text.slice(8)))
const ofDate = date => dashed(date.getFullYear(), date.getMonth() + 1, date.getDate())

const load = name => {
    const loaded = require(name)
    return loaded.default || loaded
}
const converters = {
    'nepali-datetime': () => {
        const NepaliDate = load('nepali-datetime')
        return {
            toBs: text => NepaliDate.parseEnglishDate(text, 'YYYY-MM-DD').format('YYYY-MM-DD'),
            toAd: text => new NepaliDate(text).formatEnglishDate('YYYY-MM-DD'),
        }
    },
    'nepali-date': () => {
        const NepaliDate = load('nepali-date')
        return {
            toBs: text => new NepaliDate(new Date(text)).format('YYYY-MM-DD'),
            toAd: text => ofDate(new NepaliDate(text).getEnglishDate()),
        }
    },
    'nepali-date-library': () => {
        const { ADtoBS, BStoAD } = require('nepali-date-library')
        return { toBs: text => ADtoBS(text), toAd: text => BStoAD(text) }
    },
    'bikram-sambat': () => {
        const { toBik, toGreg } = require('bikram-sambat')
        return {
            toBs: text => { const day = toBik(text); return dashed(day.year, day.month, day.day) },
            toAd: text => {
                const day = toGreg(Number(text.slice(0, 4)), Number(text.slice(5, 7)), Number(text.slice(8)))
                return dashed(day.year, day.month, day.day)
            },
        }
    },
    'nepali-date-converter': () => {
        const NepaliDate = load('nepali-date-converter')
        return {
            toBs: text => NepaliDate.fromAD(localDate(text)).format('YYYY-MM-DD'),
            toAd: text => ofDate(new NepaliDate(text).toJsDate()),
        }
    },
}

const attempt = (convert, text) => { try { return convert(text) } catch { return null } }

/// Answers that agree, differ, or are refused, the years in which they differ, and days a second.
const compare = (convert, from, to) => {
    for (const text of from) attempt(convert, text) // the engine warms up
    const start = process.hrtime.bigint()
    const answers = from.map(text => attempt(convert, text))
    const seconds = Number(process.hrtime.bigint() - start) / 1e9
    let agree = 0
    let none = 0
    const years = new Map()
    const silent = new Map()
    answers.forEach((answer, i) => {
        if (answer === to[i]) agree++
        else if (answer === null) {
            none++
            silent.set(bs[i].slice(0, 4), (silent.get(bs[i].slice(0, 4)) || 0) + 1)
        }
        else years.set(bs[i].slice(0, 4), (years.get(bs[i].slice(0, 4)) || 0) + 1)
    })
    return { agree, none, differ: from.length - agree - none, years, silent, rate: from.length / seconds }
}

const rate = perSecond => `${(perSecond / 1e6).toFixed(3)} M/s`
const parted = [] // a line a converter: how the late years go

console.log(`${ad.length} days, BS ${bs[0]} to ${bs[bs.length - 1]}; node ${process.version}\n`)
console.log('| converter | direction | agree | differ | no answer | speed | differ in BS years |')
console.log('|---|---|---|---|---|---|---|')
console.log(`| dinmala-cal, as a stream | AD to BS | | | | ${rate(40 * ad.length / adToBsTime * 1000)} | |`)
console.log(`| dinmala-cal, as a stream | BS to AD | | | | ${rate(40 * ad.length / bsToAdTime * 1000)} | |`)
for (const [name, make] of Object.entries(converters)) {
    const version = JSON.parse(fs.readFileSync(`node_modules/${name}/package.json`)).version
    const { toBs, toAd } = make()
    for (const [direction, result] of [['AD to BS', compare(toBs, ad, bs)], ['BS to AD', compare(toAd, bs, ad)]]) {
        const years = [...result.years.keys()]
        const shown = years.length > 12 ? `${years.slice(0, 3).join(' ')} ... ${years.slice(-3).join(' ')}, ${years.length} years`
            : years.join(' ')
        console.log(`| ${name} ${version} | ${direction} | ${result.agree} | ${result.differ} | ${result.none} | ` +
            `${rate(result.rate)} | ${shown} |`)
        if (direction === 'AD to BS') parted.push({ name, result })
    }
}

// Year by year where calendars are young: days that differ of all days, "-" where the package gives no answer.
const late = []
for (let year = 2078; year <= 2099; year++) late.push(String(year))
console.log(`\n| BS year | days | ${parted.map(one => one.name).join(' | ')} |`)
console.log(`|---|---|${parted.map(() => '---').join('|')}|`)
for (const year of late) {
    const days = bs.filter(text => text.startsWith(year)).length
    const cells = parted.map(({ result }) => result.silent.get(year) === days ? '-' : String(result.years.get(year) || 0))
    console.log(`| ${year} | ${days} | ${cells.join(' | ')} |`)
}
